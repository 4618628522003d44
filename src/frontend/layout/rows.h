// The lines of a model as rows of cells. A cell is a field, a name, or a text that cannot be
// separated from its neighbour; the layout sets the blanks between cells.
#pragma once

#include "frontend/findings/finding.h"
#include "frontend/syntax/tree.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// Columns count from 0.
constexpr std::size_t indentation = 2;  // of entries and names
constexpr std::size_t usual_gap = 2;    // between cells, and before a "!"
constexpr std::size_t least_gap = 1;    // where the usual one would pass the last column

struct Cell {
    Range range;
    std::size_t width = 0;        // in characters, after its own blanks are laid out
    bool may_begin_line = false;  // can follow a "+"
};

struct CellRow {
    Index record = 0;
    std::size_t first = 0;  // of its cells
    std::size_t count = 0;
    bool continues = false;      // after "+"
    bool is_pinned = false;      // its first cell begins in column 1
    bool begins_line = true;     // false if a line of the file is broken before it,
    bool ends_line = true;       // and if it is broken after it
    Range description;           // from "!" on
    std::size_t more_bytes = 0;  // bytes of the line beyond its number of characters
};

// Rows that are laid out together, in the order of the file.
struct CellRows {
    std::vector<CellRow> rows;
    std::vector<Cell> cells;
    std::vector<Edit> edits;  // of the blanks inside cells
};

// A file being laid out.
struct Text {
    std::string_view bytes;
    const Tree& tree;
};

// Does the line have more columns than the translator reads? Then it stays unchanged.
bool is_too_long(const Text& text, Index record);

// Adds the row of a record with fields or names. False if it stays unchanged because it has more
// columns than the translator reads, or would have. Precondition: a record without a fault.
bool add_row(const Text& text, Index record, CellRows& rows);

// Replaces the text between two cells by `count` blanks, unless it already is that.
void set_blanks(const Text& text, Range gap, std::size_t count, std::vector<Edit>& edits);

}  // namespace orvex::frontend
