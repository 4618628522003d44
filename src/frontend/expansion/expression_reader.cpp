#include "frontend/expansion/expression_reader.h"

#include "frontend/base/bytes.h"
#include "frontend/base/decimals.h"
#include "frontend/syntax/expressions.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <optional>
#include <string>
#include <utility>

namespace orvex::frontend {

namespace {

using std::string_view;

// Deeper than the columns of a statement allow.
constexpr int most_levels = 300;

// From the weakest to the strongest binding.
constexpr int level_of_not = 2;
constexpr int level_of_signs = 4;
constexpr int level_of_operands = 8;

struct Operator {
    string_view text;
    Operation operation;
    int level;
};

constexpr Operator operators[] = {
    {"OR", Operation::disjunction, 0},
    {"XOR", Operation::exclusive, 0},
    {"AND", Operation::conjunction, 1},
    {"EQ", Operation::equal, 3},
    {"=", Operation::equal, 3},
    {"NE", Operation::unequal, 3},
    {"<>", Operation::unequal, 3},
    {"LT", Operation::less, 3},
    {"<", Operation::less, 3},
    {"LE", Operation::less_equal, 3},
    {"<=", Operation::less_equal, 3},
    {"GT", Operation::greater, 3},
    {">", Operation::greater, 3},
    {"GE", Operation::greater_equal, 3},
    {">=", Operation::greater_equal, 3},
    {"+", Operation::plus, level_of_signs},
    {"-", Operation::minus, level_of_signs},
    {"*", Operation::times, 5},
    {"/", Operation::over, 5},
    {"**", Operation::power, 6},
    {"$", Operation::only_if, 7},
};

struct Function {
    string_view name;
    Operation operation;
    std::size_t least;  // least number of arguments
    std::size_t most;
};

constexpr std::size_t any_number = static_cast<std::size_t>(-1);

constexpr Function functions[] = {
    {"ABS", Operation::absolute, 1, 1},          {"MIN", Operation::least, 1, any_number},
    {"MAX", Operation::greatest, 1, any_number}, {"SQRT", Operation::root, 1, 1},
    {"EXP", Operation::exponential, 1, 1},       {"LOG", Operation::logarithm, 1, 1},
    {"POWER", Operation::raised, 2, 2},
};

const Operator* find_operator(string_view text) {
    const auto* const found = std::find_if(std::begin(operators), std::end(operators),
                                           [&](const Operator& row) { return row.text == text; });
    return found == std::end(operators) ? nullptr : found;
}

// The operator at the current word; it can be two symbols without a blank between them.
const Operator* operator_at(const Words& words, string_view text) {
    if (words.word().kind != TokenKind::symbol && !words.is_name()) return nullptr;
    if (!words.is_name() && words.is_joined()) {
        const Range two = {words.word().range.begin, words.following().range.end};
        if (const Operator* const found = find_operator(text_of(text, two))) return found;
    }
    return find_operator(words.text());
}

void take(Words& words, const Operator& row) {
    words.advance();
    if (row.text.size() == 2 && !is_name_byte(row.text.front())) words.advance();
}

// A number as the host writes it: its exponent may begin with "D".
std::optional<double> number_of(string_view text) {
    std::string digits(text);
    std::replace_if(
        digits.begin(), digits.end(), [](char c) { return c == 'D' || c == 'd'; }, 'E');
    return decimal_in(digits);
}

}  // namespace

void ExpressionReader::refuse(std::string_view variant) const {
    const Range place = words_.word().range;
    refuse(place.empty() ? "end" : variant, place);
}

void ExpressionReader::refuse(std::string_view variant, Range place) const {
    throw Flaw{"expression-unknown",
               variant,
               {{"text", std::string(text_of(program_.text, place))}},
               place};
}

void ExpressionReader::expect(std::string_view symbol) {
    if (!words_.is_symbol(symbol)) refuse();
    words_.advance();
}

Index ExpressionReader::add(Expression node, Offset begin) {
    node.place = {begin, words_.end_before()};
    program_.nodes.push_back(node);
    return static_cast<Index>(program_.nodes.size()) - 1;
}

Index ExpressionReader::add_operation(Operation operation, const std::vector<Index>& operands,
                                      Offset begin) {
    Expression node;
    node.operation = operation;
    node.first = static_cast<Index>(program_.operands.size());
    node.count = static_cast<Index>(operands.size());
    program_.operands.insert(program_.operands.end(), operands.begin(), operands.end());
    return add(node, begin);
}

Index ExpressionReader::read_value() {
    const Offset begin = words_.word().range.begin;
    const bool is_negative = words_.is_symbol("-");
    if (is_negative || words_.is_symbol("+")) words_.advance();
    const Index operand = read_operand();
    return is_negative ? add_operation(Operation::negative, {operand}, begin) : operand;
}

// Operators of one level are left-associative.
Index ExpressionReader::read_level(int level) {
    if (level == level_of_operands) return read_operand();
    const Offset begin = words_.word().range.begin;
    Index left = read_prefixed(level);
    for (;;) {
        const Operator* const row = operator_at(words_, program_.text);
        if (row == nullptr || row->level != level) return left;
        take(words_, *row);
        const Index right = read_level(level + 1);
        left = add_operation(row->operation, {left, right}, begin);
    }
}

// The first operand of a level, with an optional sign or NOT before it.
Index ExpressionReader::read_prefixed(int level) {
    const Offset begin = words_.word().range.begin;
    if (level == level_of_not && words_.is_name("NOT")) {
        if (++depth_ > most_levels) refuse();
        words_.advance();
        const Index operand = read_prefixed(level);
        --depth_;
        return add_operation(Operation::negation, {operand}, begin);
    }
    const bool is_negative = words_.is_symbol("-");
    const bool is_sign = level == level_of_signs && (is_negative || words_.is_symbol("+"));
    if (is_sign) words_.advance();
    const Index operand = read_level(level + 1);
    return is_sign && is_negative ? add_operation(Operation::negative, {operand}, begin) : operand;
}

Index ExpressionReader::read_operand() {
    if (words_.word().kind == TokenKind::number) return read_number();
    if (words_.is_name()) return read_name();
    if (!words_.is_symbol("(")) refuse();
    if (++depth_ > most_levels) refuse();
    words_.advance();
    const Index inner = read();
    expect(")");
    --depth_;
    return inner;
}

Index ExpressionReader::read_number() {
    const std::optional<double> value = number_of(words_.text());
    if (!value) {
        throw Flaw{
            "value-not-finite", {}, {{"text", std::string(words_.text())}}, words_.word().range};
    }
    Expression node;
    node.value = *value;
    const Offset begin = words_.word().range.begin;
    words_.advance();
    return add(node, begin);
}

// Attributes belong to the host: nothing is known about them here.
Index ExpressionReader::read_name() {
    const Range place = words_.word().range;
    const string_view name = words_.text();
    if (is_operator_word(name)) refuse();
    words_.advance();
    if (words_.word().kind == TokenKind::attribute &&
        words_.end_before() == words_.word().range.begin)
        refuse("", {place.begin, words_.word().range.end});
    if (words_.is_symbol("(") && is_function(name)) {
        if (++depth_ > most_levels) refuse();
        const Index function = read_function(name, place.begin);
        --depth_;
        return function;
    }
    return read_reference(place);
}

Index ExpressionReader::read_function(std::string_view name, Offset begin) {
    expect("(");
    if (name == "SUM") return read_sum(begin);
    if (name == "CARD") return read_cardinal(begin);
    if (name == "ORD") {
        Expression node;
        node.operation = Operation::ordinal;
        node.loop = read_looped();
        expect(")");
        return add(node, begin);
    }
    const auto* const row = std::find_if(std::begin(functions), std::end(functions),
                                         [&](const Function& known) { return known.name == name; });
    std::vector<Index> operands = {read()};
    while (words_.is_symbol(",")) {
        words_.advance();
        operands.push_back(read());
    }
    expect(")");
    if (row == std::end(functions) || operands.size() < row->least || operands.size() > row->most)
        refuse("", {begin, words_.end_before()});
    return add_operation(row->operation, operands, begin);
}

Index ExpressionReader::read_cardinal(Offset begin) {
    if (!words_.is_name()) refuse();
    Expression node;
    node.operation = Operation::cardinal;
    node.name = name_of(words_.text(), words_.word().range);
    program_.uses[node.name].is_set = true;
    words_.advance();
    expect(")");
    return add(node, begin);
}

Index ExpressionReader::read_sum(Offset begin) {
    Expression node;
    node.operation = Operation::sum;
    open_loops(node.first, node.count);
    if (words_.is_symbol("$")) {
        words_.advance();
        node.condition = read();
    }
    expect(",");
    node.body = read();
    close_loops(node.count);
    expect(")");
    return add(node, begin);
}

void ExpressionReader::open_loops(Index& first, Index& count) {
    const std::size_t before = open_.size();
    std::vector<LoopedSet>& sets = program_.sets;
    first = static_cast<Index>(sets.size());
    if (words_.is_symbol("(")) {
        do {
            words_.advance();
            open_loop();
        } while (words_.is_symbol(","));
        expect(")");
    } else {
        open_loop();
    }
    count = static_cast<Index>(open_.size() - before);
    for (std::size_t loop = before; loop < open_.size(); ++loop)
        sets.push_back({open_[loop], static_cast<Index>(loop)});
    program_.loops = std::max(program_.loops, static_cast<Index>(open_.size()));
}

// The host refuses to loop over a set that already has a loop.
void ExpressionReader::open_loop() {
    if (!words_.is_name()) refuse();
    const Index name = name_of(words_.text(), words_.word().range);
    if (std::find(open_.begin(), open_.end(), name) != open_.end()) refuse("looped");
    program_.uses[name].is_set = true;
    program_.uses[name].is_looped = true;
    open_.push_back(name);
    words_.advance();
}

void ExpressionReader::close_loops(Index count) { open_.resize(open_.size() - count); }

void ExpressionReader::recover(std::size_t loops) {
    open_.resize(std::min(open_.size(), loops));
    depth_ = 0;
}

Index ExpressionReader::read_looped() {
    if (!words_.is_name()) refuse();
    const Index name = program_.names.find(words_.text());
    const auto found = std::find(open_.begin(), open_.end(), name);
    if (name == no_index || found == open_.end()) refuse("unlooped");
    words_.advance();
    return static_cast<Index>(found - open_.begin());
}

Index ExpressionReader::read_reference(Range name) {
    Expression node;
    node.operation = Operation::reference;
    std::vector<ElementArgument> arguments;
    if (words_.is_symbol("(")) {
        do {
            words_.advance();
            check_argument(name);
            arguments.push_back(read_argument());
        } while (words_.is_symbol(","));
        expect(")");
    }
    node.name = name_of(text_of(program_.text, name), name);
    node.first = static_cast<Index>(program_.arguments.size());
    node.count = static_cast<Index>(arguments.size());
    program_.arguments.insert(program_.arguments.end(), arguments.begin(), arguments.end());
    use_arguments(node.name, static_cast<int>(arguments.size()), {name.begin, words_.end_before()});
    return add(node, name.begin);
}

// If the name in the parentheses is not that of a set, this may be an unknown function.
void ExpressionReader::check_argument(Range name) const {
    if (!words_.is_name()) return;
    const Index argument = program_.names.find(words_.text());
    if (argument != no_index && program_.uses[argument].is_set) return;
    throw Flaw{
        "expression-unknown",
        "function",
        {{"text", std::string(words_.text())}, {"name", std::string(text_of(program_.text, name))}},
        name};
}

ElementArgument ExpressionReader::read_argument() {
    ElementArgument argument;
    if (words_.word().kind != TokenKind::string) {
        const Index loop = read_looped();
        if (words_.is_symbol("+") || words_.is_symbol("-")) return read_shift(loop);
        argument.kind = ElementArgument::Kind::looped;
        argument.loop = loop;
        return argument;
    }
    string_view text = words_.text();
    if (text.size() < 2 || text.back() != text.front()) refuse();
    text = without_blanks_around(text.substr(1, text.size() - 2));
    argument.name = program_.names.add(text);
    program_.uses.resize(program_.names.size());
    program_.elements.push_back({argument.name, words_.word().range});
    words_.advance();
    return argument;
}

ElementArgument ExpressionReader::read_shifted() {
    const ElementArgument argument = read_shift(read_looped());
    expect(")");
    return argument;
}

ElementArgument ExpressionReader::read_shift(Index loop) {
    ElementArgument argument;
    argument.kind = ElementArgument::Kind::shifted;
    argument.loop = loop;
    argument.is_lag = words_.is_symbol("-");
    if (!argument.is_lag && !words_.is_symbol("+")) refuse();
    const bool is_joined = words_.is_joined();
    words_.advance();
    if (is_joined && words_.is_symbol(argument.is_lag ? "-" : "+")) {
        argument.kind = ElementArgument::Kind::circular;
        words_.advance();
    }
    argument.offset = read_operand();
    return argument;
}

Index ExpressionReader::name_of(std::string_view text, Range place) {
    const Index name = program_.names.add(text);
    program_.uses.resize(program_.names.size());
    NameUse& use = program_.uses[name];
    if (use.place.empty()) use.place = place;
    return name;
}

void ExpressionReader::use_arguments(Index name, int count, Range place) {
    NameUse& use = program_.uses[name];
    if (use.arguments < 0) {
        use.arguments = count;
    } else if (use.arguments != count) {
        throw Flaw{"expression-unknown",
                   "arguments",
                   {{"text", std::string(text_of(program_.text, place))},
                    {"name", program_.names.text(name)},
                    {"count", std::to_string(count)},
                    {"other", std::to_string(use.arguments)}},
                   place};
    }
}

}  // namespace orvex::frontend
