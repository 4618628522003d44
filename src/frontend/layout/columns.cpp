#include "frontend/layout/columns.h"

#include "frontend/base/bytes.h"
#include "notation/limits.h"
#include "notation/records.h"
#include "text/characters.h"

#include <algorithm>
#include <span>
#include <string_view>
#include <utility>

namespace orvex::frontend {

namespace {

constexpr std::size_t most_columns = 100;
constexpr std::size_t widest_aligned = 24;

using Columns = std::vector<std::size_t>;

std::span<const Cell> cells_of(const CellRows& rows, const CellRow& row) {
    return std::span(rows.cells).subspan(row.first, row.count);
}

// The column, from 0, after the last cell of a row if its cells are separated by this gap.
std::size_t end_with_gaps(const CellRows& rows, const CellRow& row, std::size_t gap) {
    std::size_t end = row.is_pinned ? 0 : indentation;
    for (const Cell& cell : cells_of(rows, row)) end += cell.width + gap;
    return row.count == 0 ? end : end - gap;
}

std::size_t description_width(const Text& text, const CellRow& row) {
    return width_of(text_of(text.bytes, row.description));
}

// Breaking.

// The number of leading cells that fit on a line: at least one, and a cell that cannot begin a line
// stays with the previous one.
std::size_t fitting_cells(std::span<const Cell> cells, std::size_t column) {
    std::size_t count = 0;
    for (const Cell& cell : cells) {
        column += cell.width;
        if (count > 0 && column > most_columns && cell.may_begin_line) break;
        column += usual_gap;
        ++count;
    }
    return count;
}

// Breaks the last row before its cell `at`. Returns whether there is such a cell.
bool break_last(CellRows& rows, std::size_t at, bool continues) {
    CellRow rest = rows.rows.back();
    if (at >= rest.count) return false;
    CellRow& row = rows.rows.back();
    row.count = at;
    row.description = {};
    row.ends_line = false;
    rest.first += at;
    rest.count -= at;
    rest.continues = continues;
    rest.is_pinned = false;
    rest.begins_line = false;
    rows.rows.push_back(rest);
    return true;
}

void break_last(CellRows& rows, bool continues) {
    std::size_t at = 0;
    do {
        const CellRow& row = rows.rows.back();
        at = fitting_cells(cells_of(rows, row), row.is_pinned ? 0 : indentation);
    } while (break_last(rows, at, continues));
}

// Columns.

// The column, in its run, of the cell `at` of a row: a cell after a "+" is never in the first
// column.
std::size_t column_of(const CellRow& row, std::size_t at) { return at + (row.continues ? 1 : 0); }

bool is_broken_or_continued(const CellRows& rows, std::size_t row) {
    return row + 1 < rows.rows.size() && rows.rows[row + 1].continues;
}

// Adds the cells of a row to the widths of the columns: all that are followed by another cell of
// their entry, up to the first that is too wide. After that one, the row is no longer aligned.
void add_widths(const CellRows& rows, std::size_t index, Columns& widths) {
    const CellRow& row = rows.rows[index];
    const std::span<const Cell> cells = cells_of(rows, row);
    for (std::size_t at = row.is_pinned ? 1 : 0; at < cells.size(); ++at) {
        const std::size_t column = column_of(row, at);
        const bool is_followed =
            at + 1 < cells.size() || (column == 0 && is_broken_or_continued(rows, index));
        if (!is_followed || cells[at].width > widest_aligned) return;
        if (widths.size() <= column) widths.resize(column + 1);
        widths[column] = std::max(widths[column], cells[at].width);
    }
}

// The rows of an entry, the end exclusive.
struct EntryRows {
    std::size_t first = 0;
    std::size_t end = 0;
    bool passes = false;  // it would pass the last column if it were aligned
};

std::vector<EntryRows> entries_of(const CellRows& rows) {
    std::vector<EntryRows> entries;
    for (std::size_t row = 0; row < rows.rows.size(); ++row) {
        if (entries.empty() || !rows.rows[row].continues) entries.push_back({row, row, false});
        entries.back().end = row + 1;
    }
    return entries;
}

// Where each column of a run begins. An entry that is not aligned does not affect the widths.
class Starts {
  public:
    Starts(const CellRows& rows, const std::vector<EntryRows>& entries) {
        Columns widths;
        for (const EntryRows& entry : entries) {
            for (std::size_t row = entry.first; row < entry.end && !entry.passes; ++row)
                add_widths(rows, row, widths);
        }
        starts_.push_back(indentation);
        for (const std::size_t width : widths)
            starts_.push_back(starts_.back() + (width == 0 ? 0 : width + usual_gap));
    }

    std::size_t operator[](std::size_t column) const {
        return starts_[std::min(column, starts_.size() - 1)];
    }

  private:
    Columns starts_;
};

// The columns, from 0, at which the cells of a row begin, and the column after the last cell.
struct Placement {
    Columns begins;
    std::size_t end = 0;
};

void put_cell(Placement& placed, std::size_t column, const Cell& cell) {
    placed.begins.push_back(column);
    placed.end = column + cell.width;
}

void place_in_columns(const CellRows& rows, const CellRow& row, const Starts& starts,
                      Placement& placed) {
    placed.begins.clear();
    for (const Cell& cell : cells_of(rows, row)) {
        const std::size_t at = placed.begins.size();
        std::size_t column = starts[column_of(row, at)];
        if (at > 0) column = std::max(column, placed.end + usual_gap);
        if (at == 0 && row.is_pinned) column = 0;
        put_cell(placed, column, cell);
    }
}

void place_with_gaps(const CellRows& rows, const CellRow& row, std::size_t gap, Placement& placed) {
    placed.begins.clear();
    placed.end = row.is_pinned ? 0 : indentation;
    for (const Cell& cell : cells_of(rows, row))
        put_cell(placed, placed.end + (placed.begins.empty() ? 0 : gap), cell);
}

// Writing.

// Makes the edits that set the blanks of rows.
class Writer {
  public:
    Writer(const Text& text, const CellRows& rows, std::vector<Edit>& edits)
        : text_(text), rows_(rows), edits_(edits) {}

    // Puts the description in this column. A row that would pass the last column read gets narrow
    // gaps instead.
    void write(const CellRow& row, const Placement& placed, std::size_t description) {
        if (fits(row, row.description.empty() ? placed.end : description))
            return put(row, placed, description);
        for (const std::size_t gap : {usual_gap, least_gap}) {
            place_with_gaps(rows_, row, gap, narrow_);
            if (gap == least_gap || fits(row, narrow_.end + gap))
                return put(row, narrow_, narrow_.end + gap);
        }
    }

    void write_apart(const CellRow& row) {
        place_with_gaps(rows_, row, usual_gap, wide_);
        write(row, wide_, wide_.end + usual_gap);
    }

  private:
    bool fits(const CellRow& row, std::size_t end) const {
        return end + description_width(text_, row) + row.more_bytes <= notation::record_columns;
    }

    void put(const CellRow& row, const Placement& placed, std::size_t description) {
        Offset at = line_range(text_.tree, row.record).begin;
        std::size_t column = 0;
        for (std::size_t i = 0; i < row.count; ++i) {
            const Cell& cell = rows_.cells[row.first + i];
            if (i > 0) {
                set_blanks(text_, {at, cell.range.begin}, placed.begins[i] - column, edits_);
            } else if (!row.is_pinned) {
                begin_line(row, cell.range.begin, placed.begins[i]);
            }
            at = cell.range.end;
            column = placed.begins[i] + cell.width;
        }
        if (!row.description.empty()) {
            set_blanks(text_, {at, row.description.begin}, description - column, edits_);
        } else if (row.ends_line) {
            set_blanks(text_, {at, line_range(text_.tree, row.record).end}, 0, edits_);
        }
    }

    void begin_line(const CellRow& row, Offset cell, std::size_t column) {
        const Offset mark = row.continues ? 1 : 0;
        if (row.begins_line) {
            const Offset line = line_range(text_.tree, row.record).begin;
            return set_blanks(text_, {line + mark, cell}, column - mark, edits_);
        }
        Edit edit;
        edit.begin = rows_.cells[row.first - 1].range.end;
        edit.end = cell;
        edit.text = line_end(row.record);
        if (row.continues) edit.text += notation::continuation_mark;
        edit.text.append(column - mark, blank_char);
        edits_.push_back(std::move(edit));
    }

    // The line end of the line or, if it is the last of the file, of the previous line.
    std::string_view line_end(Index record) const {
        const Tree& tree = text_.tree;
        const auto end = [&tree](Index of) {
            return Range{line_range(tree, of).end, tree.tokens[tree.records[of + 1].token].begin};
        };
        return text_of(text_.bytes, end(record).empty() ? end(record - 1) : end(record));
    }

    const Text& text_;
    const CellRows& rows_;
    std::vector<Edit>& edits_;
    Placement wide_;
    Placement narrow_;
};

}  // namespace

void break_entry(CellRows& rows) { break_last(rows, true); }

void break_names(const Text& text, CellRows& rows) {
    const CellRow& row = rows.rows.back();
    const bool has_description = !row.description.empty();
    std::size_t end = end_with_gaps(rows, row, usual_gap);
    if (has_description) end += usual_gap + description_width(text, row);
    if (end <= most_columns) return;
    break_last(rows, false);
    const std::size_t names = rows.rows.back().count;
    if (has_description && names > 1) break_last(rows, names - 1, false);
}

void place_entries(const Text& text, const CellRows& rows, std::vector<Edit>& edits) {
    std::vector<EntryRows> entries = entries_of(rows);
    Placement placed;
    const Starts all(rows, entries);
    for (EntryRows& entry : entries) {
        for (std::size_t row = entry.first; row < entry.end; ++row) {
            place_in_columns(rows, rows.rows[row], all, placed);
            entry.passes = entry.passes || placed.end > most_columns;
        }
    }
    const Starts starts(rows, entries);
    Writer writer(text, rows, edits);
    for (const EntryRows& entry : entries) {
        for (std::size_t row = entry.first; row < entry.end; ++row) {
            if (entry.passes) {
                writer.write_apart(rows.rows[row]);
            } else {
                place_in_columns(rows, rows.rows[row], starts, placed);
                writer.write(rows.rows[row], placed, placed.end + usual_gap);
            }
        }
    }
}

void place_names(const Text& text, const CellRows& rows, std::vector<Edit>& edits) {
    std::size_t column = indentation;
    for (const CellRow& row : rows.rows) {
        const std::size_t end = end_with_gaps(rows, row, usual_gap);
        const bool counts = row.count > 0 && !row.description.empty();
        if (counts && end <= indentation + widest_aligned)
            column = std::max(column, end + usual_gap);
    }
    Writer writer(text, rows, edits);
    Placement placed;
    for (const CellRow& row : rows.rows) {
        place_with_gaps(rows, row, usual_gap, placed);
        const bool is_alone = row.count == 0;
        const std::size_t least = is_alone ? indentation : placed.end + usual_gap;
        writer.write(row, placed, is_alone ? least : std::max(column, least));
    }
}

void place_apart(const Text& text, const CellRows& rows, std::vector<Edit>& edits) {
    Writer writer(text, rows, edits);
    for (const CellRow& row : rows.rows) writer.write_apart(row);
}

}  // namespace orvex::frontend
