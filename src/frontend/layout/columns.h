// Where the cells of rows go, and where lines are broken.
#pragma once

#include "frontend/layout/rows.h"

#include <cstddef>
#include <vector>

namespace orvex::frontend {

// Breaks the last of the rows, which belongs to an entry, if it passes the last column: before a
// cell, which then follows a "+".
void break_entry(CellRows& rows);

// The same for a line of names. A description stays with the last name, which then begins a line.
void break_names(const Text& text, CellRows& rows);

// The edits that set the blanks of the rows. Cells of a run of entries are aligned, each in the
// column for its position in its entry; names are not, but their descriptions are.
void place_entries(const Text& text, const CellRows& rows, std::vector<Edit>& edits);
void place_names(const Text& text, const CellRows& rows, std::vector<Edit>& edits);

// The edits for rows that are not aligned with one another.
void place_apart(const Text& text, const CellRows& rows, std::vector<Edit>& edits);

}  // namespace orvex::frontend
