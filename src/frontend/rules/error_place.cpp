#include "frontend/rules/error_place.h"

#include "frontend/rules/edits.h"
#include "frontend/syntax/reading.h"
#include "notation/keywords.h"
#include "notation/records.h"

#include <algorithm>

namespace orvex::frontend {

std::string_view text_in(const ErrorCase& at, Range range) {
    return text_of(at.source.bytes, range);
}

std::string as_read(const ErrorCase& at, Range range) { return capitals(text_in(at, range)); }

FieldParts parts_at(const ErrorCase& at) {
    const Tree& tree = at.source.tree;
    return parts_of(tree, at.error.record, field_at(tree, at.error.place.begin));
}

std::string label_before(const ErrorCase& at, Offset offset) {
    const Tree& tree = at.source.tree;
    const Index first = tree.records[at.error.record].token;
    for (Index token = token_at(tree, offset); token > first;) {
        const TokenKind kind = tree.tokens[--token].kind;
        if (kind == TokenKind::label || kind == TokenKind::keyword)
            return as_read(at, range_of(tree, token)) + ":";
    }
    const bool is_keyword = tree.tokens[first].kind == TokenKind::keyword;
    return is_keyword ? keyword_of_record(at, at.error.record) + ":" : std::string();
}

std::string keyword_of_record(const ErrorCase& at, Index record) {
    const Tree& tree = at.source.tree;
    const Index token = tree.records[record].token;
    if (tree.tokens[token].kind != TokenKind::keyword) return {};
    return capitals(without_blanks_at_end(text_in(at, range_of(tree, token))));
}

const Block* block_of(const ErrorCase& at) {
    const auto& blocks = at.model.blocks;
    const auto after =
        std::upper_bound(blocks.begin(), blocks.end(), at.error.record,
                         [](Index record, const Block& block) { return record < block.record; });
    return after == blocks.begin() ? nullptr : &*(after - 1);
}

const Entry* entry_of(const ErrorCase& at, const Block& block) {
    const auto entries = entries_of(at.model, block);
    const auto after = std::upper_bound(
        entries.begin(), entries.end(), at.error.record,
        [](Index record, const Entry& entry) { return record < entry.head.record; });
    return after == entries.begin() ? nullptr : &*(after - 1);
}

bool declares(const Model& model, Kind kind) {
    return std::any_of(model.blocks.begin(), model.blocks.end(), [kind](const Block& block) {
        return is_opened_by(block, notation::Opens::declaration) &&
               kind_of_type(block.keyword->type) == kind;
    });
}

std::string declaring_keyword(Kind kind) {
    const auto keywords = notation::keywords();
    const auto found = std::find_if(keywords.begin(), keywords.end(), [kind](const auto& keyword) {
        return keyword.opens == notation::Opens::declaration && kind_of_type(keyword.type) == kind;
    });
    return notation::keyword_mark + std::string(found->word) + ":";
}

Range without_blanks(const ErrorCase& at, Range range) {
    const auto is_blank = [&](Offset offset) {
        return notation::as_blank(at.source.bytes[offset]) == blank_char;
    };
    while (range.begin < range.end && is_blank(range.end - 1)) --range.end;
    while (range.begin < range.end && is_blank(range.begin)) ++range.begin;
    return range;
}

Edit breaking_row(const ErrorCase& at, Offset offset) {
    const Range line = line_range(at.source.tree, at.error.record);
    const Range record = record_range(at.source.tree, at.error.record);
    return breaking_line(at.source.bytes, offset, text_in(at, {line.begin, record.begin}));
}

}  // namespace orvex::frontend
