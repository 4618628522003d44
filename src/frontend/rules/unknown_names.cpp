#include "frontend/rules/unknown_names.h"

#include "frontend/base/spelling.h"
#include "frontend/syntax/expression_parts.h"
#include "frontend/syntax/expressions.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <unordered_set>
#include <utility>

namespace orvex::frontend {

namespace {

constexpr std::size_t most_comparisons = 1'000'000;  // per file
constexpr std::size_t shortest_name = 3;             // of a name taken for a misspelt variable

// Functions and constants of the host, besides those in syntax/expressions.
constexpr std::string_view known_words[] = {
    "CEIL", "COS",  "EPS",    "FLOOR", "IFTHEN", "INF",   "LOG10",   "LOG2", "MOD",
    "NA",   "NO",   "NORMAL", "PI",    "PROD",   "ROUND", "SAMEAS",  "SIGN", "SIN",
    "SMAX", "SMIN", "SQR",    "TAN",   "TRUNC",  "UNDF",  "UNIFORM", "YES"};

// The prefix of the translator's own names, such as ORVEPS.
constexpr std::string_view own_prefix = "ORV";

bool is_known_word(std::string_view name) {
    return name.starts_with(own_prefix) ||
           std::find(std::begin(known_words), std::end(known_words), name) != std::end(known_words);
}

bool has_set_errors(const Model& model) {
    return std::any_of(model.errors.begin(), model.errors.end(), [](const Error& error) {
        return error.fault == Fault::chkset_inactive || error.fault == Fault::leadlg_inactive;
    });
}

// Does one name only add to the end of the other, like TAU0 and TAUBAR to TAU? A doubled letter is
// a slip.
bool extends(std::string_view name, std::string_view variable) {
    if (!name.starts_with(variable)) return false;
    return name.size() != variable.size() + 1 || name.back() != variable.back();
}

class Finder {
  public:
    Finder(const Source& source, const Model& model, const HostText& host,
           const std::vector<bool>& is_skipped)
        : source_(source),
          model_(model),
          host_(host),
          is_skipped_(is_skipped),
          has_set_errors_(has_set_errors(model)) {
        for (const Error& error : model.errors) faulty_records_.insert(error.record);
    }

    std::vector<UnknownName> read(std::size_t comparisons) {
        left_ = comparisons;
        const bool declares = host_.is_whole && has_most();
        for (Index symbol = 0; symbol < model_.symbols.size(); ++symbol) {
            if (!may_be_unknown(symbol)) continue;
            if (is_once_in_constraint(symbol)) add_constrained(symbol);
            if (declares && !is_added(symbol)) add_undeclared(symbol);
        }
        std::sort(found_.begin(), found_.end(), [](const UnknownName& a, const UnknownName& b) {
            return a.uses.front() < b.uses.front();
        });
        return std::move(found_);
    }

  private:
    const Symbol& at(Index symbol) const { return model_.symbols[symbol]; }
    bool is_added(Index symbol) const { return !found_.empty() && found_.back().symbol == symbol; }

    // Is it a name that the host's text must declare?
    bool is_of_host(Index symbol) const {
        const Kind kind = at(symbol).kind;
        const bool is_wanted = kind == Kind::parameter || kind == Kind::set || kind == Kind::host;
        const std::string& name = name_of(model_, symbol);
        return is_wanted && !at(symbol).is_declared && at(symbol).first_use != no_index &&
               is_plain_name(name) && !is_operator_word(name) && !is_known_word(name);
    }

    bool is_in_text(Index symbol) const {
        return host_.words.find(name_of(model_, symbol)) != no_index;
    }

    // Are at least about half of the names in the host's text?
    bool has_most() const {
        std::size_t known = 0;
        std::size_t unknown = 0;
        for (Index symbol = 0; symbol < model_.symbols.size(); ++symbol) {
            if (is_of_host(symbol) && at(symbol).kind != Kind::host)
                ++(is_in_text(symbol) ? known : unknown);
        }
        return unknown <= known + 1;
    }

    bool may_be_unknown(Index symbol) const {
        const bool is_judged = is_of_host(symbol) && !is_skipped_[symbol] && !at(symbol).touched &&
                               !(at(symbol).kind == Kind::set && has_set_errors_);
        if (!is_judged || faulty_records_.contains(model_.uses[at(symbol).first_use].record))
            return false;
        const std::string& name = name_of(model_, symbol);
        return !is_in_text(symbol) && !is_in_other_model(host_, model_.node, name) &&
               !is_in_gap(symbol);
    }

    std::vector<Part> parts_of_record(Index record) const {
        std::vector<Part> parts;
        add_parts(source_.bytes, record_range(source_.tree, record), parts);
        return parts;
    }

    static std::size_t part_of(const std::vector<Part>& parts, const Use& use) {
        const auto part = std::find_if(parts.begin(), parts.end(), [&](const Part& one) {
            return one.range.begin == use.range.begin;
        });
        return static_cast<std::size_t>(part - parts.begin());
    }

    // Is an operator missing before or after the name? Then it may be anything.
    bool is_in_gap(Index symbol) const {
        if (at(symbol).kind != Kind::host) return false;
        const Use& use = model_.uses[at(symbol).first_use];
        const std::vector<Part> parts = parts_of_record(use.record);
        const std::size_t number = part_of(parts, use);
        return lacks_operator(parts, number) || lacks_operator(parts, number + 1);
    }

    bool is_once_in_constraint(Index symbol) const {
        const Use& use = model_.uses[at(symbol).first_use];
        return use.role == Role::constraint && use.next == no_index &&
               name_of(model_, symbol).size() >= shortest_name;
    }

    // May this many names be compared?
    bool spend(std::size_t comparisons) {
        const bool is_allowed = comparisons <= left_;
        if (is_allowed) left_ -= comparisons;
        return is_allowed;
    }

    void add(Index symbol, std::string near) {
        UnknownName& name = found_.emplace_back();
        name.symbol = symbol;
        name.near = std::move(near);
        for (Index use = at(symbol).first_use; use != no_index; use = model_.uses[use].next)
            name.uses.push_back(use);
    }

    void add_constrained(Index symbol) {
        if (!spend(model_.declared.size())) return;
        const std::string& name = name_of(model_, symbol);
        const int count = arguments_of_use(model_.uses[at(symbol).first_use]);
        std::vector<std::string> candidates;
        for (const Index index : model_.declared) {
            const std::string& variable = name_of(model_, index);
            const bool fits = is_variable(at(index).kind) && at(index).dimension == count;
            if (fits && !extends(name, variable)) candidates.push_back(variable);
        }
        std::string near = nearest(name, candidates);
        if (!near.empty()) add(symbol, std::move(near));
    }

    // The number of arguments that the name is used with, on its line.
    int arguments_of_use(const Use& use) const {
        const std::vector<Part> parts = parts_of_record(use.record);
        return count_arguments(parts, part_of(parts, use));
    }

    // A word that occurs only in expressions may belong to the host.
    void add_undeclared(Index symbol) {
        std::string near;
        if (spend(host_.list.size())) near = nearest(name_of(model_, symbol), host_.list);
        if (at(symbol).kind != Kind::host || !near.empty()) add(symbol, std::move(near));
    }

    const Source& source_;
    const Model& model_;
    const HostText& host_;
    const std::vector<bool>& is_skipped_;
    bool has_set_errors_;
    std::unordered_set<Index> faulty_records_;
    std::size_t left_ = 0;  // names that may still be compared
    std::vector<UnknownName> found_;
};

}  // namespace

std::vector<UnknownName> read_unknown(const Source& source, const Model& model,
                                      const HostText& host, const std::vector<bool>& is_skipped) {
    if (model.lost) return {};
    return Finder(source, model, host, is_skipped)
        .read(most_comparisons / std::max<std::size_t>(host.model_count, 1));
}

}  // namespace orvex::frontend
