#include "frontend/expansion/interpreter.h"

#include "frontend/base/decimals.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <set>
#include <span>
#include <string_view>

namespace orvex::frontend {

namespace {

using Kind = ElementArgument::Kind;

// Further flaws in values would add nothing new.
constexpr std::size_t most_flaws = 20;

// This many passes take a moment.
constexpr std::uint64_t pause_passes = std::uint64_t{1} << 16U;

// The value of an expression with a flaw.
constexpr double unknown = std::numeric_limits<double>::quiet_NaN();

double truth(bool is_true) { return is_true ? 1 : 0; }

double compared(Operation operation, double a, double b) {
    switch (operation) {
    case Operation::equal: return truth(a == b);
    case Operation::unequal: return truth(a != b);
    case Operation::less: return truth(a < b);
    case Operation::less_equal: return truth(a <= b);
    case Operation::greater: return truth(a > b);
    case Operation::greater_equal: return truth(a >= b);
    case Operation::conjunction: return truth(a != 0 && b != 0);
    case Operation::disjunction: return truth(a != 0 || b != 0);
    case Operation::exclusive: return truth((a != 0) != (b != 0));
    default: return unknown;
    }
}

double of_two(Operation operation, double a, double b) {
    switch (operation) {
    case Operation::power:
    case Operation::raised: return std::pow(a, b);
    case Operation::times: return a * b;
    case Operation::over: return a / b;
    case Operation::plus: return a + b;
    case Operation::minus: return a - b;
    case Operation::least: return std::min(a, b);
    case Operation::greatest: return std::max(a, b);
    default: return compared(operation, a, b);
    }
}

double of_one(Operation operation, double a) {
    switch (operation) {
    case Operation::negative: return -a;
    case Operation::negation: return truth(a == 0);
    case Operation::absolute: return std::fabs(a);
    case Operation::root: return std::sqrt(a);
    case Operation::exponential: return std::exp(a);
    case Operation::logarithm: return std::log(a);
    default: return a;
    }
}

// The current position in a set that is looped over.
struct Pass {
    const DataSet* set = nullptr;
    Index position = 0;
    Index element = no_index;
};

class Interpreter {
  public:
    Interpreter(const GeneratorProgram& program, const Data& data, const Pause& pause)
        : program_(program),
          elements_(*data.elements),
          pause_(pause),
          sets_(program.names.size()),
          values_(program.names.size()),
          element_(program.names.size()),
          loops_(program.loops),
          counts_(program.statements.size()) {
        for (Index name = 0; name < program.names.size(); ++name) bind(data, name);
    }

    void run(const TakeLine* take_line) {
        take_line_ = take_line;
        execute(0, static_cast<Index>(program_.statements.size()));
        if (take_line_ != nullptr && !line_.empty()) end_line();
    }

    const Passes& counts() const { return counts_; }
    std::vector<Flaw>& flaws() { return flaws_; }

  private:
    void bind(const Data& data, Index name) {
        const std::string& text = program_.names.text(name);
        sets_[name] = find_set(data, text);
        const auto parameter = data.parameters.find(text);
        values_[name] = parameter == data.parameters.end() ? nullptr : &parameter->second;
        element_[name] = elements_.find(text);
    }

    void execute(Index first, Index end) {
        for (Index at = first; at < end; at = program_.statements[at].end) {
            const Statement& statement = program_.statements[at];
            if (statement.kind == Statement::Kind::put) {
                ++counts_[at];
                print(statement);
            } else {
                const auto body = [&] {
                    if (!holds(statement.condition)) return;
                    ++counts_[at];
                    execute(at + 1, statement.end);
                };
                each_pass(statement.first, statement.count, body);
            }
        }
    }

    // Calls the body for each combination of elements of the sets; once if there are no sets.
    template <typename Body>
    void each_pass(Index first, Index count, const Body& body) {
        if (count == 0) return body();
        const LoopedSet& looped = program_.sets[first];
        const Tuples& members = sets_[looped.name]->members;
        for (Index position = 0; position < members.size(); ++position) {
            if (++passes_ % pause_passes == 0 && pause_) pause_();
            loops_[looped.loop] = {sets_[looped.name], position, members.tuple(position).front()};
            each_pass(first + 1, count - 1, body);
        }
    }

    bool holds(Index condition) {
        if (condition == no_index) return true;
        const double value = evaluate(condition);
        return value != 0 && !std::isnan(value);
    }

    void print(const Statement& put) {
        for (Index at = put.first; at < put.first + put.count; ++at) {
            const Item& item = program_.items[at];
            if (take_line_ == nullptr) {
                try_item(item);
            } else {
                print_item(item);
            }
        }
    }

    void try_item(const Item& item) {
        if (item.kind == Item::Kind::value) evaluate(item.node);
        if (item.kind == Item::Kind::element) element_of(item.element);
    }

    void print_item(const Item& item) {
        switch (item.kind) {
        case Item::Kind::text:
            if (line_.empty()) line_place_ = item.text;
            line_ += text_of(program_.text, item.text);
            break;
        case Item::Kind::line_end: end_line(); break;
        case Item::Kind::value: append_number(line_, evaluate(item.node)); break;
        case Item::Kind::element:
            if (const Index element = element_of(item.element); element != no_index)
                line_ += elements_.text(element);
            break;
        }
    }

    void end_line() {
        (*take_line_)(line_, line_place_);
        line_.clear();
    }

    // The element of an argument; no_index past the end of a set, or if the data do not have it.
    Index element_of(const ElementArgument& argument) {
        if (argument.kind == Kind::element) return element_[argument.name];
        const Pass& pass = loops_[argument.loop];
        if (argument.kind == Kind::looped) return pass.element;
        const double offset = evaluate(argument.offset);
        if (std::isnan(offset)) return no_index;
        if (offset != std::floor(offset)) {
            add_flaw(argument.offset, "expression-unknown", "offset");
            return no_index;
        }
        const Tuples& members = pass.set->members;
        const double size = members.size();
        double position = pass.position + (argument.is_lag ? -offset : offset);
        if (argument.kind == Kind::circular) position -= size * std::floor(position / size);
        if (position < 0 || position >= size) return no_index;
        return members.tuple(static_cast<Index>(position)).front();
    }

    double evaluate(Index index) {
        const Expression& node = program_.nodes[index];
        switch (node.operation) {
        case Operation::number: return node.value;
        case Operation::reference: return value_of(node);
        case Operation::ordinal: return loops_[node.loop].position + 1.0;
        case Operation::cardinal: return sets_[node.name]->members.size();
        case Operation::only_if: return only_if(node);
        case Operation::sum: return sum_of(index, node);
        default: return operate(index, node);
        }
    }

    double value_of(const Expression& node) {
        const auto begin = program_.arguments.begin() + node.first;
        const std::size_t before = place_.size();
        bool is_there = true;
        for (Index i = 0; i < node.count; ++i) {
            const Index element = element_of(begin[i]);
            is_there = is_there && element != no_index;
            place_.push_back(element);
        }
        const double value = is_there ? value_at_place(node, std::span(place_).subspan(before)) : 0;
        place_.resize(before);
        return value;
    }

    double value_at_place(const Expression& node, std::span<const Index> place) const {
        if (values_[node.name] != nullptr) return value_at(*values_[node.name], place);
        const Tuples& members = sets_[node.name]->members;
        return truth(members.size() > 0 && members.find(place) != no_index);
    }

    // The operand before "$" is evaluated only if the condition holds.
    double only_if(const Expression& node) {
        const double condition = evaluate(program_.operands[node.first + 1]);
        if (std::isnan(condition)) return unknown;
        return condition == 0 ? 0 : evaluate(program_.operands[node.first]);
    }

    double sum_of(Index index, const Expression& node) {
        double sum = 0;
        each_pass(node.first, node.count, [&] {
            const double condition = node.condition == no_index ? 1 : evaluate(node.condition);
            if (std::isnan(condition)) sum = unknown;
            if (condition != 0) sum += evaluate(node.body);
        });
        return checked(index, sum, std::isnan(sum));
    }

    double operate(Index index, const Expression& node) {
        double value = evaluate(program_.operands[node.first]);
        if (node.count == 1)
            return checked(index, of_one(node.operation, value), std::isnan(value));
        for (Index i = 1; i < node.count; ++i) {
            const double next = evaluate(program_.operands[node.first + i]);
            const bool is_known = std::isnan(value) || std::isnan(next);
            value = checked(index, of_two(node.operation, value, next), is_known);
        }
        return value;
    }

    // The value, or `unknown`. `is_known`: the flaw of an operand has already been reported.
    double checked(Index index, double value, bool is_known) {
        if (std::isfinite(value) && !is_known) return value;
        if (!is_known) add_flaw(index, "value-not-finite", {});
        return unknown;
    }

    void add_flaw(Index node, std::string_view code, std::string_view variant) {
        if (flaws_.size() >= most_flaws || !flawed_.insert(node).second) return;
        const Range place = program_.nodes[node].place;
        flaws_.push_back(
            {code, variant, {{"text", std::string(text_of(program_.text, place))}}, place});
    }

    const GeneratorProgram& program_;
    const NameTable& elements_;
    const Pause& pause_;
    std::vector<const DataSet*> sets_;  // for the program's names, like the next two
    std::vector<const DataValues*> values_;
    std::vector<Index> element_;
    std::vector<Pass> loops_;
    Passes counts_;
    std::uint64_t passes_ = 0;
    std::vector<Index> place_;  // arguments of the references being evaluated
    std::string line_;
    Range line_place_;  // of its first text
    const TakeLine* take_line_ = nullptr;
    std::vector<Flaw> flaws_;
    std::set<Index> flawed_;
};

}  // namespace

Passes try_program(const GeneratorProgram& program, const Data& data, const Pause& pause,
                   std::vector<Flaw>& flaws) {
    Interpreter interpreter(program, data, pause);
    interpreter.run(nullptr);
    std::vector<Flaw>& found = interpreter.flaws();
    flaws.insert(flaws.end(), found.begin(), found.end());
    return interpreter.counts();
}

void run_program(const GeneratorProgram& program, const Data& data, const Pause& pause,
                 const TakeLine& take_line) {
    Interpreter(program, data, pause).run(&take_line);
}

void append_number(std::string& text, double value) { text += shortest_decimal(value); }

}  // namespace orvex::frontend
