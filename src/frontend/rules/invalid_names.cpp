#include "frontend/base/decimals.h"
#include "frontend/rules/arguments.h"
#include "frontend/rules/checks.h"
#include "frontend/rules/edits.h"
#include "frontend/rules/facts.h"
#include "frontend/rules/warn.h"
#include "frontend/syntax/expressions.h"
#include "frontend/syntax/fields.h"
#include "frontend/syntax/lookalikes.h"
#include "notation/labels.h"
#include "text/characters.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>

namespace orvex::frontend {

namespace {

// An invalid name as it is read, and its place.
struct Name {
    std::string text;
    Range place;
};

// The second word of a name with a blank.
struct Word {
    std::size_t begin = 0;
    std::size_t end = 0;
};

Word second_word(std::string_view name) {
    const std::size_t blank = std::min(name.find(blank_char), name.size());
    const std::size_t begin = std::min(name.find_first_not_of(blank_char, blank), name.size());
    return {begin, std::min(name.find(blank_char, begin), name.size())};
}

bool is_value_label(std::string_view text) {
    const notation::Label* const label = notation::find_label(text);
    return label != nullptr && label->full;
}

// The field that a word after a name probably means: "Q:5" for "Q=5" and for "5" (after the name of
// a block, a number is the elasticity); empty if none.
std::string field_meant(std::string_view word, bool is_opening) {
    if (decimal_in(word)) {
        const std::string_view label = is_opening ? "S" : notation::quantity_label;
        return std::string(label) + ':' + std::string(word);
    }
    const std::size_t mark = std::min(word.find('='), word.size());
    if (mark + 1 >= word.size() || !is_value_label(word.substr(0, mark))) return {};
    return std::string(word.substr(0, mark)) + ':' + std::string(word.substr(mark + 1));
}

// What is wrong with the name, as a variant of the message. A label needs a value after it; `field`
// is the probable meaning of the word.
std::string_view variant_of(std::string_view name, Word word, std::string_view field) {
    if (is_digit(name.front())) return "digit";
    if (name.find_first_of("[]{}") != std::string_view::npos) return "brackets";
    if (name.find(',') != std::string_view::npos) return "comma";
    if (word.begin == name.size()) return {};
    const std::string_view second = name.substr(word.begin, word.end - word.begin);
    if (is_value_label(second) && word.end < name.size()) return "label";
    return field.empty() ? "blank" : "value";
}

// Does the text contain only names and commas?
bool are_names(std::string_view text) {
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(','), text.size());
        if (end > 0 && !may_be_name(text.substr(0, end))) return false;
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return true;
}

class Checker {
  public:
    Checker(const Subject& subject, Findings& findings)
        : subject_(subject),
          tree_(subject.source.tree),
          model_(*subject.model),
          findings_(findings) {}

    void check_declared(Index index) {
        const Symbol& symbol = model_.symbols[index];
        const bool is_found = has(*subject_.facts, index, is_odd) && symbol.entered &&
                              !is_no_name(*subject_.facts, symbol.declaration.begin);
        if (is_found && !symbol.touched) check({name_of(model_, index), symbol.declaration}, true);
    }

    void check_undeclared(const Undeclared& name) {
        if (!has(*subject_.facts, name.symbol, is_odd)) return;
        check({name_of(model_, name.symbol), model_.uses[name.first_use].range}, false);
    }

    // Checks the text after the arguments of declared names.
    void check_ends(Index record) {
        if (tree_.records[record].kind != RecordKind::names) return;
        const Index end = tree_.records[record + 1].field;
        for (Index field = tree_.records[record].field; field < end; ++field) {
            const FieldParts parts = parts_of(tree_, record, field);
            if (parts.ignored.empty() || has_error(*subject_.facts, field) || has_wrong_set(parts))
                continue;
            if (is_no_name(*subject_.facts, parts.root.begin)) continue;
            const Range place = {parts.root.begin, parts.ignored.end};
            check({as_read(subject_, place), place}, true);
        }
    }

  private:
    bool has_wrong_set(const FieldParts& parts) const {
        const auto arguments = parts.own.arguments();
        return std::any_of(arguments.begin(), arguments.end(), [&](Range argument) {
            return is_invalid_set(text_in(subject_, argument));
        });
    }

    void check(const Name& name, bool is_declared) {
        const auto record = static_cast<Index>(line_of(tree_, name.place.begin) - 1);
        if (is_declared && !records_.insert(record).second) return;
        if (!lookalikes(name.text).empty()) return;
        const Word word = second_word(name.text);
        const std::string second = name.text.substr(word.begin, word.end - word.begin);
        const bool is_opening = tree_.records[record].kind == RecordKind::opening;
        const std::string field = second.empty() ? "" : field_meant(second, is_opening);
        const std::string_view variant = variant_of(name.text, word, field);
        Finding& finding =
            warn(subject_, findings_, name.place,
                 {{"name", name.text}, {"label", second}, {"field", field}}, variant);
        if (variant == "comma" && is_declared) finding.fix = without_commas(record);
        if (variant == "brackets") finding.fix = in_parentheses(name);
        if (variant == "label") set_fix(finding, Confidence::maybe, {colon_after(name, word)});
        if (variant == "value") set_fix(finding, Confidence::maybe, {edit_of(name, word, field)});
    }

    static Edit edit_of(const Name& name, Word word, const std::string& text) {
        return {name.place.begin + word.begin, name.place.begin + word.end, text};
    }

    static Edit colon_after(const Name& name, Word word) {
        return edit_of(name, {word.end, word.end}, ":");
    }

    static Fix in_parentheses(const Name& name) {
        Fix fix;
        for (std::size_t at = name.text.find_first_of("[]{}"); at < name.text.size();
             at = name.text.find_first_of("[]{}", at + 1)) {
            const std::size_t place = name.place.begin + at;
            const bool opens = name.text[at] == '[' || name.text[at] == '{';
            fix.edits.push_back({place, place + 1, opens ? "(" : ")"});
        }
        return fix;
    }

    // Replaces the commas in a line of declarations by blanks.
    std::optional<Fix> without_commas(Index record) const {
        Fix fix = {Confidence::certain, {}};
        for (Index token = tree_.records[record].token; token < tree_.records[record + 1].token;
             ++token) {
            if (tree_.tokens[token].kind != TokenKind::name) continue;
            const Range place = range_of(tree_, token);
            const std::string_view text = text_in(subject_, place);
            if (!are_names(text)) return {};
            for (std::size_t at = text.find(','); at < text.size(); at = text.find(',', at + 1))
                fix.edits.push_back({place.begin + at, place.begin + at + 1, " "});
        }
        return fix;
    }

    const Subject& subject_;
    const Tree& tree_;
    const Model& model_;
    Findings& findings_;
    std::unordered_set<Index> records_;  // of declarations that have a finding
};

}  // namespace

// One finding per line of declarations: all its words have the same cause.
void check_name_invalid(const Subject& subject, Findings& findings) {
    Checker checker(subject, findings);
    for (const Index symbol : subject.model->declared) checker.check_declared(symbol);
    for (const Undeclared& name : subject.facts->undeclared) checker.check_undeclared(name);
    const ModelNode& node = subject.source.tree.models[subject.model->node];
    for (Index record = node.record; record < node.end; ++record) checker.check_ends(record);
}

}  // namespace orvex::frontend
