// Texts of the user, made safe to show on a terminal.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// The characters of a text, one for each column; U+FFFD in place of those that would change the
// terminal, or the order of what it shows. TABs stay. They point into the text.
std::vector<std::string_view> shown_characters(std::string_view text);

// The same as one text, with a blank for each TAB.
std::string printable(std::string_view text);

}  // namespace orvex::frontend
