// What is wrong with parentheses, and with the lists in them: arguments, extra indices, conditions,
// expressions.
#include "frontend/rules/edits.h"
#include "frontend/rules/error_place.h"
#include "frontend/rules/error_texts.h"
#include "frontend/syntax/expressions.h"
#include "frontend/syntax/reading.h"
#include "notation/limits.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

namespace {

// A parenthesis without its partner.
struct Lone {
    Offset offset;
    bool is_open;
};

// If several are not closed, the last one.
std::optional<Lone> lone_parenthesis(const ErrorCase& at, Range range) {
    std::vector<Offset> open;
    for (Offset offset = range.begin; offset < range.end; ++offset) {
        const char c = at.source.bytes[offset];
        if (c == '(') open.push_back(offset);
        if (c != ')') continue;
        if (open.empty()) return Lone{offset, false};
        open.pop_back();
    }
    if (open.empty()) return {};
    return Lone{open.back(), true};
}

// The text before a parenthesis: a name, a label with its colon, or one character.
std::string text_before(const ErrorCase& at, Offset offset) {
    const Offset start = record_range(at.source.tree, at.error.record).begin;
    std::string text(without_blanks_at_end(as_read(at, {start, std::max(start, offset)})));
    if (text.empty()) return text;
    if (text.back() == ':') return label_before(at, offset);
    std::size_t begin = text.size();
    while (begin > 0 && is_name_byte(text[begin - 1])) --begin;
    return text.substr(std::min(begin, text.size() - 1));
}

// Where the list after a parenthesis ends: before the first blanks without a comma on either side.
Offset end_of_list(const ErrorCase& at, Range range) {
    const std::string text = as_read(at, range);
    for (std::size_t blank = text.find(' '); blank != std::string::npos;
         blank = text.find(' ', blank + 1)) {
        const std::size_t next = text.find_first_not_of(' ', blank);
        if (next == std::string::npos || blank == 0) break;
        if (std::string_view(",(").find(text[blank - 1]) == std::string_view::npos &&
            text[next] != ',')
            return range.begin + static_cast<Offset>(blank);
        blank = next;
    }
    return without_blanks(at, range).end;
}

// A parenthesis that is not closed in a text that ends with `range`.
void say_open(const ErrorCase& at, Offset parenthesis, Range range, Said& said) {
    said.place = {parenthesis, parenthesis + 1};
    said.values["before"] = text_before(at, parenthesis);
    if (!said.values["before"].empty()) said.variant = "after";
    said.fix = Fix{Confidence::maybe, {inserting(end_of_list(at, {parenthesis, range.end}), ")")}};
}

// The parenthesis without a partner in a range; false if there is none.
bool say_lone(const ErrorCase& at, Range range, Said& said) {
    const std::optional<Lone> lone = lone_parenthesis(at, range);
    if (!lone) return false;
    if (lone->is_open) {
        say_open(at, lone->offset, range, said);
        return true;
    }
    said.place = {lone->offset, lone->offset + 1};
    said.values["before"] = as_read(at, without_blanks(at, {range.begin, lone->offset}));
    said.variant = said.values["before"].empty() ? "lone" : "extra";
    said.fix = Fix{Confidence::maybe, {removing(said.place)}};
    return true;
}

// The extra indices of the error's field from that byte on, up to its condition.
Range indices_from(const ErrorCase& at, Offset begin) {
    const FieldParts parts = parts_at(at);
    const std::size_t mark = text_in(at, {begin, parts.all.end}).find('$');
    if (mark == std::string_view::npos) return {begin, parts.all.end};
    return {begin, begin + static_cast<Offset>(mark)};
}

// A comma after a closed list. The list, with the name or "#" before it, begins at `start`.
void say_tail(const ErrorCase& at, Range list, Offset start, Said& said) {
    const std::size_t close = text_in(at, list).rfind(')');
    if (close == std::string_view::npos) return;
    const Offset after = list.begin + static_cast<Offset>(close) + 1;
    said.variant = "tail";
    said.place = without_blanks(at, {after, list.end});
    said.values["text"] = as_read(at, said.place);
    said.values["list"] = as_read(at, {start, after});
    said.fix = Fix{Confidence::maybe,
                   {{std::size_t{after} - 1, after, ""}, {said.place.end, said.place.end, ")"}}};
}

// In a declaration the comma was meant to separate names.
void say_comma(const ErrorCase& at, Said& said) {
    const bool is_last = said.place.end - said.place.begin == 1;
    if (at.source.bytes[said.place.begin] != ',') return;
    said.help = "names";
    said.fix = Fix{Confidence::maybe,
                   {replacing({said.place.begin, said.place.begin + 1}, is_last ? "" : " ")}};
}

// Is each part of the text, between commas, a set that the model also uses elsewhere?
bool are_known_sets(const ErrorCase& at, std::string_view text) {
    for (;;) {
        const std::size_t comma = std::min(text.find(','), text.size());
        const Symbol* const symbol = find_symbol(at.model, text.substr(0, comma));
        if (symbol == nullptr || symbol->kind != Kind::set) return false;
        if (comma == text.size()) return true;
        text.remove_prefix(comma + 1);
    }
}

std::string without_quotes(std::string text) {
    std::erase_if(text, [](char c) { return c == '"' || c == '\''; });
    return text;
}

}  // namespace

void say_open_declaration(const ErrorCase& at, Said& said) {
    const Range rest = {at.error.place.begin, record_range(at.source.tree, at.error.record).end};
    if (say_lone(at, rest, said)) return;
    said.variant = "full";
    said.values["name"] = as_read(at, at.error.place);
}

void say_open_expression(const ErrorCase& at, Said& said) { say_lone(at, parts_at(at).all, said); }

void say_open_condition(const ErrorCase& at, Said& said) {
    say_lone(at, {at.error.place.begin, parts_at(at).all.end}, said);
}

void say_open_arguments(const ErrorCase& at, Said& said) {
    say_open(at, at.error.place.begin, parts_at(at).value, said);
}

void say_open_indices(const ErrorCase& at, Said& said) {
    say_open(at, at.error.place.begin, indices_from(at, at.error.place.begin), said);
}

void say_text_after_arguments(const ErrorCase& at, Said& said) {
    const Range value = parts_at(at).value;
    say_tail(at, {at.error.place.begin, value.end}, value.begin, said);
    const bool is_declaration = at.source.tree.records[at.error.record].kind == RecordKind::names;
    if (is_declaration) say_comma(at, said);
}

void say_text_after_indices(const ErrorCase& at, Said& said) {
    const Range list = indices_from(at, at.error.place.begin);
    const Range value = parts_at(at).all;
    const std::size_t mark = text_in(at, {value.begin, list.end}).find('#');
    say_tail(at, list, value.begin + static_cast<Offset>(mark), said);
}

void say_bare_indices(const ErrorCase& at, Said& said) {
    const Range sets = without_blanks(at, indices_from(at, at.error.place.begin + 1));
    if (sets.empty()) {
        said.variant = "bare";
        said.place.end = said.place.begin + 1;
        return;
    }
    said.variant = "sets";
    said.place = sets;
    said.values["sets"] = as_read(at, sets);
    const bool is_sure = are_known_sets(at, text_in(at, sets));
    said.fix = Fix{is_sure ? Confidence::certain : Confidence::maybe,
                   {{sets.begin, sets.begin, "("}, {sets.end, sets.end, ")"}}};
}

void say_quoted_index(const ErrorCase& at, Said& said) {
    const Tree& tree = at.source.tree;
    said.place = range_of(tree, token_at(tree, at.error.place.begin));
    said.variant = "argument";
    said.values["argument"] = as_read(at, said.place);
    const std::string name = without_quotes(std::string(text_in(at, said.place)));
    if (is_plain_name(name)) said.fix = Fix{Confidence::maybe, {replacing(said.place, name)}};
}

void say_many_arguments(const ErrorCase& at, Said& said) {
    const FieldParts parts = parts_at(at);
    said.variant = "name";
    said.values["name"] = as_read(at, parts.root);
    if (parts.own.count > notation::most_arguments)
        said.place = {parts.own.ranges[notation::most_arguments].begin, parts.value.end};
}

void say_broken_quotes(const ErrorCase& at, Said& said) {
    const Tree& tree = at.source.tree;
    said.place = range_of(tree, token_at(tree, at.error.place.begin));
    said.values["argument"] = as_read(at, said.place);
    const std::string name = without_quotes(std::string(text_in(at, said.place)));
    said.values["name"] = capitals(name);
    if (name.empty()) {
        said.variant = "empty";
        return;
    }
    const bool is_mixed = text_in(at, said.place).back() == '\'';
    said.variant = is_mixed ? "mixed" : "open";
    if (is_plain_name(name))
        said.fix = Fix{is_mixed ? Confidence::certain : Confidence::maybe,
                       {replacing(said.place, '"' + name + '"')}};
}

}  // namespace orvex::frontend
