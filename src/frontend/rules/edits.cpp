#include "frontend/rules/edits.h"

#include "frontend/base/bytes.h"

#include <algorithm>
#include <utility>

namespace orvex::frontend {

namespace {

bool is_blank(char c) { return c == ' ' || c == '\t'; }

Offset without_blanks_before(std::string_view bytes, Offset place) {
    while (place > 0 && is_blank(bytes[place - 1])) --place;
    return place;
}

bool has_description(const Tree& tree, Index record) {
    for (Index token = tree.records[record].token; token < tree.records[record + 1].token; ++token)
        if (tree.tokens[token].kind == TokenKind::description) return true;
    return false;
}

}  // namespace

Edit replacing(Range range, std::string text) { return {range.begin, range.end, std::move(text)}; }

Edit inserting(Offset place, std::string text) { return {place, place, std::move(text)}; }

Edit removing(Range range) { return {range.begin, range.end, {}}; }

void set_fix(Finding& finding, Confidence confidence, std::vector<Edit> edits) {
    finding.fix = Fix{confidence, std::move(edits)};
}

std::string cased_like(std::string_view model, std::string_view text) {
    const auto is_capital = [](char c) { return c >= 'A' && c <= 'Z'; };
    const bool has_capital = std::any_of(model.begin(), model.end(), is_capital);
    return has_capital ? std::string(text) : in_small_letters(text);
}

Edit breaking_line(std::string_view bytes, Offset place, std::string_view start) {
    return {without_blanks_before(bytes, place), place, "\n" + std::string(start)};
}

Range whole_line(const Tree& tree, Index record) {
    return {tree.tokens[tree.records[record].token].begin,
            tree.tokens[tree.records[record + 1].token].begin};
}

Offset field_begin(const Tree& tree, Index field) {
    Index token = tree.fields[field].token;
    while (tree.tokens[token].kind == TokenKind::plus ||
           tree.tokens[token].kind == TokenKind::blank)
        ++token;
    return tree.tokens[token].begin;
}

std::optional<Edit> removing_field(const Source& source, Index record, Index field) {
    const Tree& tree = source.tree;
    const Index first = tree.records[record].field;
    const Index end = tree.records[record + 1].field;
    const RecordKind kind = tree.records[record].kind;
    if (end - first == 1) {
        const bool is_bare = kind == RecordKind::continuation || kind == RecordKind::names;
        if (!is_bare || has_description(tree, record)) return {};
        return removing(whole_line(tree, record));
    }
    if (field != first) {
        const Range text =
            range_of(tree, tree.fields[field].token, end_of_field(tree, record, field));
        return removing({without_blanks_before(source.bytes, text.begin), text.end});
    }
    if (kind == RecordKind::entry || kind == RecordKind::opening) return {};
    return removing({field_begin(tree, field), field_begin(tree, field + 1)});
}

}  // namespace orvex::frontend
