#include "frontend/layout/rows.h"

#include "frontend/base/bytes.h"
#include "notation/limits.h"
#include "notation/records.h"

#include <string>
#include <utility>

namespace orvex::frontend {

namespace {

bool is_blank(const Tree& tree, Index token) { return tree.tokens[token].kind == TokenKind::blank; }

// The first token of a field that is neither a blank nor the "+" of its record.
Index first_token(const Tree& tree, Index field) {
    Index token = tree.fields[field].token;
    while (is_blank(tree, token) || tree.tokens[token].kind == TokenKind::plus) ++token;
    return token;
}

// Lays out the blanks inside fields, and splits a row into cells.
class RowReader {
  public:
    RowReader(const Text& text, Index record, CellRows& rows)
        : text_(text), tree_(text.tree), record_(record), rows_(rows) {
        row_.record = record;
        row_.first = rows.cells.size();
        row_.continues = tree_.records[record].kind == RecordKind::continuation;
    }

    bool read() {
        const std::size_t edits = rows_.edits.size();
        const Index end = tree_.records[record_ + 1].field;
        for (Index field = tree_.records[record_].field; field < end; ++field) add_field(field);
        row_.count = rows_.cells.size() - row_.first;
        take_description();
        if (fits()) {
            rows_.rows.push_back(row_);
            return true;
        }
        rows_.cells.resize(row_.first);
        rows_.edits.resize(edits);
        return false;
    }

  private:
    bool has_names() const { return tree_.records[record_].kind == RecordKind::names; }

    void add_field(Index field) {
        const Index first = first_token(tree_, field);
        const Index end = end_of_field(tree_, record_, field);
        const bool is_first = rows_.cells.size() == row_.first;
        const std::size_t saved = has_names() ? 0 : lay_out_field(first, end);
        Range range = range_of(tree_, first, end);
        const bool has_blank_label = tree_.tokens[first].kind == TokenKind::colon && !has_names();
        if (has_blank_label && !is_first) return extend(range.end, saved);
        if (is_first) pin(range, has_blank_label);
        const std::string_view bytes = text_of(text_.bytes, range);
        const std::size_t width = width_of(bytes);
        row_.more_bytes += bytes.size() - width;
        rows_.cells.push_back({range, width - saved, !bytes.starts_with('+')});
    }

    // A field with a blank label needs the blanks before its colon, so it becomes part of the
    // previous cell.
    void extend(Offset end, std::size_t saved) {
        Cell& cell = rows_.cells.back();
        const std::string_view added = text_of(text_.bytes, {cell.range.end, end});
        row_.more_bytes += added.size() - width_of(added);
        cell.width += width_of(added) - saved;
        cell.range.end = end;
    }

    // A keyword, "+Q:5", a name after a "+" in column 1 and a blank label stay where they are.
    void pin(Range& range, bool has_blank_label) {
        const Offset line = line_range(tree_, record_).begin;
        const bool is_keyword = tree_.records[record_].kind == RecordKind::opening;
        const bool is_plus =
            range.begin == line && text_.bytes[line] == notation::continuation_mark;
        row_.is_pinned = is_keyword || is_plus || has_blank_label;
        if (row_.is_pinned) range.begin = line;
    }

    // Removes the blanks after the colon of a field, and leaves one blank after any dropped text
    // before its label. Returns how much shorter the field gets.
    std::size_t lay_out_field(Index first, Index end) {
        std::size_t saved = 0;
        Index token = first;
        while (token < end && tree_.tokens[token].kind != TokenKind::label &&
               tree_.tokens[token].kind != TokenKind::colon) {
            ++token;
        }
        const bool has_text_before = token > first && token < end && is_blank(tree_, token - 1) &&
                                     tree_.tokens[token].kind == TokenKind::label;
        if (has_text_before) saved += reduce(token - 1, 1);
        while (token < end && tree_.tokens[token].kind != TokenKind::colon) ++token;
        if (token + 1 < end && is_blank(tree_, token + 1)) saved += reduce(token + 1, 0);
        return saved;
    }

    std::size_t reduce(Index blanks, std::size_t count) {
        const Range gap = range_of(tree_, blanks);
        set_blanks(text_, gap, count, rows_.edits);
        return gap.end - gap.begin - count;
    }

    // Does the row fit on a line with the least gaps? It may have had none at all.
    bool fits() const {
        std::size_t columns = indentation + row_.more_bytes;
        for (std::size_t at = row_.first; at < rows_.cells.size(); ++at)
            columns += rows_.cells[at].width + least_gap;
        columns += width_of(text_of(text_.bytes, row_.description));
        return columns <= notation::record_columns;
    }

    void take_description() {
        Index token = tree_.records[record_ + 1].token - 1;
        if (tree_.tokens[token].kind == TokenKind::line_end) --token;
        if (tree_.tokens[token].kind != TokenKind::description) return;
        row_.description = range_of(tree_, token);
        const std::string_view bytes = text_of(text_.bytes, row_.description);
        row_.more_bytes += bytes.size() - width_of(bytes);
    }

    const Text& text_;
    const Tree& tree_;
    Index record_;
    CellRows& rows_;
    CellRow row_;
};

}  // namespace

bool is_too_long(const Text& text, Index record) {
    const Range line = line_range(text.tree, record);
    return line.end - line.begin > notation::record_columns;
}

bool add_row(const Text& text, Index record, CellRows& rows) {
    return !is_too_long(text, record) && RowReader(text, record, rows).read();
}

void set_blanks(const Text& text, Range gap, std::size_t count, std::vector<Edit>& edits) {
    const std::string_view now = text_of(text.bytes, gap);
    if (now.size() == count && now.find_first_not_of(blank_char) == std::string_view::npos) return;
    Edit edit;
    edit.begin = gap.begin;
    edit.end = gap.end;
    edit.text.assign(count, blank_char);
    edits.push_back(std::move(edit));
}

}  // namespace orvex::frontend
