// Rows of the guide's tables, which are built into the program.
#pragma once

#include <string>
#include <string_view>

namespace orvex::frontend {

// The row of a table for a label or a keyword, "Q" or "$PROD", as a list of Markdown: each cell
// that has a text after the head of its column, which terminals show better than a table. Empty
// where there is none.
std::string guide_row(std::string_view name);

}  // namespace orvex::frontend
