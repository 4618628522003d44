// Rows of the guide's tables, which are built into the program.
#pragma once

#include <string>
#include <string_view>

namespace orvex::frontend {

// The row of a table for a label or a keyword, as a table of Markdown with its head: "Q", "$PROD";
// empty where there is none.
std::string guide_row(std::string_view name);

}  // namespace orvex::frontend
