// Where the cells of rows go, and where lines are broken.
#pragma once

#include "frontend/layout/rows.h"

#include <cstddef>
#include <vector>

namespace orvex::frontend {

// Breaks the last of the rows, an entry's, where it passes the last column: before a cell, which
// then follows a "+".
void break_entry(CellRows& rows);

// The same for a line of names. A description stays with the last name, which then begins a line.
void break_names(const Text& text, CellRows& rows);

// The edits that give the blanks of the rows their number. Cells of a run of entries line up, each
// at the column of its place in its entry; names do not, but their descriptions do.
void place_entries(const Text& text, const CellRows& rows, std::vector<Edit>& edits);
void place_names(const Text& text, const CellRows& rows, std::vector<Edit>& edits);

// The edits for rows that do not line up with one another.
void place_apart(const Text& text, const CellRows& rows, std::vector<Edit>& edits);

}  // namespace orvex::frontend
