// The lines of a model as rows of cells. A cell is a field, a name, or what cannot be parted from
// its neighbour; the blanks between cells are what a layout sets.
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
    std::size_t width = 0;        // in characters, once the blanks in it are laid out
    bool may_begin_line = false;  // can follow a "+"
};

struct CellRow {
    Index record = 0;
    std::size_t first = 0;  // of its cells
    std::size_t count = 0;
    bool continues = false;      // after "+"
    bool is_pinned = false;      // its first cell begins in column 1
    bool begins_line = true;     // false where a line of the file is broken before it,
    bool ends_line = true;       // and where it is broken after it
    Range description;           // from "!" on
    std::size_t more_bytes = 0;  // in the line, than characters
};

// Rows that are laid out together, in the order of the file.
struct CellRows {
    std::vector<CellRow> rows;
    std::vector<Cell> cells;
    std::vector<Edit> edits;  // of the blanks inside of cells
};

// A file that is laid out.
struct Text {
    std::string_view bytes;
    const Tree& tree;
};

// Has the line more columns than the translator reads? It stays as it is.
bool is_too_long(const Text& text, Index record);

// Adds the row of a record with fields or names. False where it stays as it is: it has more
// columns than the translator reads, or would have. Precondition: a record without a fault.
bool add_row(const Text& text, Index record, CellRows& rows);

// Puts `count` blanks in the place of what is between two cells, unless they are there.
void set_blanks(const Text& text, Range gap, std::size_t count, std::vector<Edit>& edits);

}  // namespace orvex::frontend
