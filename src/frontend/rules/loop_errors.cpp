// What is wrong with the sets that a row loops over.
#include "frontend/base/spelling.h"
#include "frontend/findings/wording.h"
#include "frontend/rules/edits.h"
#include "frontend/rules/error_place.h"
#include "frontend/rules/error_texts.h"
#include "frontend/syntax/expressions.h"
#include "frontend/syntax/reading.h"
#include "notation/arguments.h"
#include "notation/labels.h"
#include "text/characters.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvex::frontend {

namespace {

using notation::ArgumentKind;
using notation::Opens;

// Adds the sets that the statements of a field loop over.
void add_sets(const ErrorCase& at, const Field& field, std::vector<std::string>& sets) {
    for (const auto list :
         {arguments_of(at.model, field.reference), extras_of(at.model, field.reference)}) {
        for (const Argument& argument : list) {
            std::string set = as_read(at, argument.range);
            const bool is_new = std::find(sets.begin(), sets.end(), set) == sets.end();
            if (argument.kind == ArgumentKind::set && is_plain_name(set) && is_new)
                sets.push_back(std::move(set));
        }
    }
}

bool is_function_block(const Block& block) {
    return is_opened_by(block, Opens::production) || is_opened_by(block, Opens::demand);
}

// The sets that the row of the error loops over by then.
std::vector<std::string> looped_sets(const ErrorCase& at) {
    std::vector<std::string> sets;
    const Block* const block = block_of(at);
    if (block == nullptr) return sets;
    if (is_function_block(*block)) add_sets(at, block->head, sets);
    const Entry* const entry = entry_of(at, *block);
    if (entry == nullptr) return sets;
    add_sets(at, entry->head, sets);
    for (const Field& field : fields_of(at.model, *entry)) {
        const bool ranges =
            as_read(at, field.label).find(notation::element_label) != std::string::npos;
        if (ranges && field.text.begin < at.error.place.begin) add_sets(at, field, sets);
    }
    return sets;
}

// "`R`", "`R` and `S`", "no set".
std::string in_words(const std::vector<std::string>& sets) {
    std::string text;
    for (std::size_t i = 0; i < sets.size(); ++i) {
        if (i > 0) text += i + 1 == sets.size() ? " and " : ", ";
        text += back_quoted(sets[i]);
    }
    return text.empty() ? "no set" : text;
}

// The keyword of the error's block with its name: "$PROD:Y".
std::string block_name(const ErrorCase& at, const Block& block) {
    return keyword_of_record(at, block.record) + ":" + as_read(at, block.head.reference.name);
}

// The name that has the argument at the error.
Range owner_of(const ErrorCase& at) {
    const Tree& tree = at.source.tree;
    return range_of(tree, owner_of_argument(tree, at.error.place.begin));
}

bool is_number(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), is_digit);
}

// Does the model contain the argument as an element in double quotes?
bool is_known_element(const ErrorCase& at) {
    const Index element = at.model.names.find('"' + at.error.text + '"');
    return element != no_index;
}

// All places with this cause are corrected together.
void put_in(const ErrorCase& at, Confidence confidence, std::string text, Said& said) {
    text = cased_like(text_in(at, at.error.place), text);
    said.fix = Fix{confidence, {replacing(at.error.place, text)}};
    for (const Range also : at.error.also) said.fix->edits.push_back({also.begin, also.end, text});
}

// Puts an element that has other quotes, or none, into double quotes.
void say_unquoted(const ErrorCase& at, Said& said) {
    const std::string& argument = at.error.text;
    const bool is_quoted =
        argument.size() > 2 && argument.front() == '\'' && argument.back() == '\'';
    const std::string_view text = text_in(at, at.error.place);
    said.variant = argument.front() == '\'' ? "quotes" : "number";
    if (is_quoted)
        put_in(at, Confidence::certain, '"' + std::string(text.substr(1, text.size() - 2)) + '"',
               said);
    if (is_number(argument)) put_in(at, Confidence::certain, '"' + std::string(text) + '"', said);
}

void say_unlooped(const ErrorCase& at, Said& said) {
    const std::vector<std::string> sets = looped_sets(at);
    said.values["sets"] = in_words(sets);
    const Block* const block = block_of(at);
    const bool is_opening = block != nullptr && entry_of(at, *block) == nullptr;
    said.variant = is_opening ? "opening" : "sets";
    if (is_opening) said.values["block"] = block_name(at, *block);
    if (is_known_element(at)) {
        said.meant = '"' + at.error.text + '"';
    } else if (at.is_compared) {
        said.meant = nearest(at.error.text, sets);
    }
    if (!said.meant.empty()) put_in(at, Confidence::maybe, said.meant, said);
}

// An expression that needs parentheses around it.
void say_bare_expression(const ErrorCase& at, Said& said) {
    const Range value = parts_at(at).value;
    said.variant = "function";
    said.place = owner_of(at);
    if (at.error.also.empty())
        said.fix =
            Fix{Confidence::maybe, {{value.begin, value.begin, "("}, {value.end, value.end, ")"}}};
}

// The kind of the argument if it cannot be a set; otherwise host.
Kind other_kind(const ErrorCase& at) {
    const Symbol& symbol = at.model.symbols[at.error.symbol];
    return symbol.kind == Kind::set ? Kind::host : symbol.kind;
}

}  // namespace

void say_lead_and_lag(const ErrorCase& at, Said& said) {
    const std::string& argument = at.error.text;
    const std::size_t first = argument.find_first_of("+-");
    const std::size_t second = argument.find_first_of("+-", first + 1);
    if (second == std::string::npos) return;
    const std::string one = argument.substr(first + 1, second - first - 1);
    const std::string other = argument.substr(second + 1);
    constexpr std::size_t most_digits = 4;
    const bool are_known = is_number(one) && is_number(other) && one.size() <= most_digits &&
                           other.size() <= most_digits;
    if (!are_known || argument[first] == argument[second]) return;
    const int sign = argument[first] == '+' ? 1 : -1;
    const int sum = sign * (std::stoi(one) - std::stoi(other));
    const std::string set = argument.substr(0, first);
    said.meant = sum == 0 ? set : set + (sum > 0 ? "+" : "") + std::to_string(sum);
    put_in(at, Confidence::maybe, said.meant, said);
}

void say_shifted_set(const ErrorCase& at, Said& said) {
    const Block* const block = block_of(at);
    if (block == nullptr || !is_function_block(*block)) return;
    const std::string& argument = at.error.text;
    const std::size_t shift = std::min(argument.find_first_of("+-"), argument.size());
    std::vector<std::string> sets;
    add_sets(at, block->head, sets);
    if (shift == 0) return;
    said.variant = "sets";
    said.values["set"] = without_blanks_at_end(std::string_view(argument).substr(0, shift));
    said.values["sets"] = in_words(sets);
    said.values["block"] = block_name(at, *block);
    if (!at.is_compared) return;
    const std::string near = nearest(said.values["set"], sets);
    if (near.empty()) return;
    said.meant = near + argument.substr(shift);
    put_in(at, Confidence::maybe, said.meant, said);
}

void say_unlooped_set(const ErrorCase& at, Said& said) {
    const std::string owner = as_read(at, owner_of(at));
    said.values["owner"] = owner;
    if (at.error.text.empty()) {
        said.variant = "blank";
    } else if (is_function(owner)) {
        say_bare_expression(at, said);
    } else if (at.error.text.front() == '\'' || is_number(at.error.text)) {
        say_unquoted(at, said);
    } else if (notation::argument_kind(at.error.text) == ArgumentKind::shifted) {
        said.variant = "lead";
    } else if (const Kind kind = other_kind(at); kind != Kind::host) {
        said.variant = "kind";
        said.values["known"] = kind_with_article(kind);
    } else {
        say_unlooped(at, said);
    }
}

}  // namespace orvex::frontend
