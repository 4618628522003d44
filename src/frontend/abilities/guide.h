// Rows of the guide's tables, which are built into the program.
#pragma once

#include <string>
#include <string_view>

namespace orvex::frontend {

// The row of a table for a label or a keyword, "Q" or "$PROD", as a Markdown list, which terminals
// show better than a table: each cell that is not empty, after the heading of its column. Empty if
// there is no such row.
std::string guide_row(std::string_view name);

}  // namespace orvex::frontend
