// Texts of the user, as they may be shown on a terminal.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// The characters of a text, one for each that a column counts; U+FFFD for those that would change
// the terminal, or the order of what it shows. TAB is left. They point into the text.
std::vector<std::string_view> shown_characters(std::string_view text);

// The same as a text, with a blank for each TAB.
std::string printable(std::string_view text);

}  // namespace orvex::frontend
