#include "frontend/rules/warn.h"

#include "frontend/findings/failure.h"
#include "frontend/findings/place.h"
#include "frontend/syntax/reading.h"
#include "notation/records.h"

namespace orvex::frontend {

namespace {

Range colon_of(const Tree& tree, const Field& field) {
    Index token = tree.fields[field.node].token;
    while (tree.tokens[token].kind != TokenKind::colon) ++token;
    return range_of(tree, token);
}

// After the first field of a record, a label may be a blank.
Range label_of(const Subject& subject, const Field& field) {
    if (!field.label.empty()) return field.label;
    const Tree& tree = subject.source.tree;
    const Offset colon = colon_of(tree, field).begin;
    const bool is_first = tree.records[field.record].field == field.node;
    const bool is_blank =
        !is_first && notation::as_blank(subject.source.bytes[colon - 1]) == blank_char;
    return {is_blank ? colon - 1 : colon, colon};
}

}  // namespace

Finding& warn(const Subject& subject, std::vector<Finding>& findings, Range place,
              const Values& values, std::string_view variant) {
    return findings.emplace_back(
        warning(std::string(subject.code), values, span_of(subject.source, place), variant));
}

std::string_view text_in(const Subject& subject, Range range) {
    return text_of(subject.source.bytes, range);
}

std::string as_read(const Subject& subject, Range range) {
    return capitals(text_in(subject, range));
}

Range label_place(const Subject& subject, const Field& field) {
    return {label_of(subject, field).begin, colon_of(subject.source.tree, field).end};
}

std::string label_text(const Subject& subject, const Field& field) {
    return as_read(subject, label_of(subject, field)) + ":";
}

}  // namespace orvex::frontend
