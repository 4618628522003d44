#include "frontend/syntax/tree.h"

#include "notation/limits.h"
#include "notation/records.h"

#include <algorithm>

namespace orvex::frontend {

namespace {

bool ends_record(TokenKind kind) {
    return kind == TokenKind::description || kind == TokenKind::unread ||
           kind == TokenKind::line_end;
}

Index name_token(const Tree& tree, Index model) {
    const Index record = tree.models[model].record;
    Index token = tree.records[record].token;
    const Index end = tree.records[record + 1].token;
    while (token < end && tree.tokens[token].kind != TokenKind::model_name) ++token;
    return token == end ? no_index : token;
}

// TABs stay inside a name, but not before it.
char as_in_name(char c) { return c == tab ? c : notation::as_read(c); }

// The end of a record's tokens: before its description and any blanks at its end.
Index end_of_record(const Tree& tree, Index record) {
    const Index first = tree.records[record].token;
    Index end = tree.records[record + 1].token;
    while (end > first && ends_record(tree.tokens[end - 1].kind)) --end;
    while (end > first && tree.tokens[end - 1].kind == TokenKind::blank) --end;
    return end;
}

Range up_to_blank(const Tree& tree, Index token) {
    Index end = token + 1;
    while (end + 1 < tree.tokens.size() && tree.tokens[end].kind != TokenKind::blank &&
           !ends_record(tree.tokens[end].kind)) {
        ++end;
    }
    return range_of(tree, token, end);
}

}  // namespace

std::string model_name(std::string_view bytes, const Tree& tree, Index model) {
    const Index token = name_token(tree, model);
    if (token == no_index) return {};
    std::string name(text_of(bytes, range_of(tree, token)));
    name.resize(std::min<std::size_t>(name.size(), notation::model_name_columns));
    std::transform(name.begin(), name.end(), name.begin(), as_in_name);
    name.resize(orvex::trimmed(name).size());
    return name;
}

Index end_of_field(const Tree& tree, Index record, Index field) {
    const Index end = field + 1 < tree.records[record + 1].field ? tree.fields[field + 1].token
                                                                 : end_of_record(tree, record);
    Index last = end;
    while (last > tree.fields[field].token && tree.tokens[last - 1].kind == TokenKind::blank)
        --last;
    return last;
}

Range line_range(const Tree& tree, Index record) {
    const Index first = tree.records[record].token;
    Index end = tree.records[record + 1].token;
    if (end > first && tree.tokens[end - 1].kind == TokenKind::line_end) --end;
    return range_of(tree, first, end);
}

Range record_range(const Tree& tree, Index record) {
    Index first = tree.records[record].token;
    const Index next = tree.records[record + 1].token;
    while (first < next && tree.tokens[first].kind == TokenKind::blank) ++first;
    const Index end = end_of_record(tree, record);
    if (first < end) return range_of(tree, first, end);
    const Range line = line_range(tree, record);
    return {std::min(tree.tokens[first].begin, line.end), line.end};
}

Range fault_range(const Tree& tree, const FieldNode& field) {
    return up_to_blank(tree, field.token + field.fault_offset);
}

}  // namespace orvex::frontend
