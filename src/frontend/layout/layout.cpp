#include "frontend/layout/layout.h"

#include "frontend/base/bytes.h"
#include "frontend/layout/blank_lines.h"
#include "frontend/layout/columns.h"
#include "frontend/layout/letters.h"
#include "frontend/layout/rows.h"
#include "frontend/layout/runs.h"
#include "frontend/syntax/allowance_mark.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>
#include <tuple>

namespace orvex::frontend {

namespace {

// Does the comment before a line allow findings in it? Then the line must not be broken into two.
bool is_allowed(const Text& text, Index record) {
    if (text.tree.records[record - 1].kind != RecordKind::comment) return false;
    const Range comment = line_range(text.tree, record - 1);
    const std::string words = in_small_letters(text_of(text.bytes, comment));
    return words.find(allowance_mark) != std::string::npos;
}

// Adds the rows of a run, broken where necessary.
void read_rows(const Text& text, const Run& run, CellRows& rows) {
    for (Index record = run.first; record < run.end; ++record) {
        const RecordKind kind = text.tree.records[record].kind;
        if (kind == RecordKind::blank || kind == RecordKind::comment) continue;
        if (!add_row(text, record, rows)) continue;
        if (run.kind == RunKind::names && !is_allowed(text, record)) break_names(text, rows);
        if (run.may_break) break_entry(rows);
    }
}

void place_rows(const Text& text, const Run& run, const CellRows& rows, std::vector<Edit>& edits) {
    switch (run.kind) {
    case RunKind::opening: return place_apart(text, rows, edits);
    case RunKind::entries: return place_entries(text, rows, edits);
    case RunKind::names: return place_names(text, rows, edits);
    }
}

void lay_out_runs(const Text& text, const std::vector<Run>& runs, std::vector<Edit>& edits) {
    CellRows rows;
    for (const Run& run : runs) {
        rows.rows.clear();
        rows.cells.clear();
        rows.edits.clear();
        read_rows(text, run, rows);
        std::move(rows.edits.begin(), rows.edits.end(), std::back_inserter(edits));
        place_rows(text, run, rows, edits);
    }
}

void put_in_order(std::vector<Edit>& edits) {
    std::sort(edits.begin(), edits.end(), [](const Edit& a, const Edit& b) {
        return std::tie(a.begin, a.end) < std::tie(b.begin, b.end);
    });
}

bool is_of_blanks(std::string_view text) {
    return text.find_first_not_of(" \t\r") == std::string_view::npos;
}

void keep_within(std::vector<Edit>& edits, Range range) {
    std::erase_if(edits, [range](const Edit& edit) {
        return edit.begin < range.begin || edit.end > range.end;
    });
}

Range lines(const Tree& tree, Index first, Index end) {
    return range_of(tree, tree.records[first].token, tree.records[end].token);
}

}  // namespace

bool may_be_laid_out(const Model& model) { return model.errors.empty() && model.cut.empty(); }

std::vector<Edit> layout_of(const Source& source, const Model& model) {
    const Text text{source.bytes, source.tree};
    std::vector<Edit> edits;
    lay_out_runs(text, runs_of(source.tree, model.node), edits);
    set_blank_lines(text, model.node, edits);
    set_letters(text, model, edits);
    put_in_order(edits);
    return edits;
}

std::vector<Edit> layout_of_lines(const Source& source, const Model& model, int first, int last) {
    const Tree& tree = source.tree;
    auto begin = static_cast<Index>(first - 1);
    Index end = std::min(static_cast<Index>(last), line_count(tree));
    for (const Run& run : runs_of(tree, model.node)) {
        if (run.end <= begin || run.first >= end) continue;
        begin = std::min(begin, run.first);
        end = std::max(end, run.end);
    }
    std::vector<Edit> edits = layout_of(source, model);
    keep_within(edits, lines(tree, begin, end));
    return edits;
}

std::vector<Edit> layout_of_line(const Source& source, const Model& model, int line) {
    const Range range = line_range(source.tree, static_cast<Index>(line - 1));
    std::vector<Edit> edits = layout_of(source, model);
    keep_within(edits, range);
    const bool is_broken = std::any_of(edits.begin(), edits.end(), [](const Edit& edit) {
        return edit.text.find('\n') != std::string::npos;
    });
    if (is_broken) return {};
    std::erase_if(edits, [&](const Edit& edit) {
        const Range replaced = {static_cast<Offset>(edit.begin), static_cast<Offset>(edit.end)};
        return !is_of_blanks(edit.text) || !is_of_blanks(text_of(source.bytes, replaced));
    });
    return edits;
}

}  // namespace orvex::frontend
