// Texts as the translator reads them.
#pragma once

#include <string>
#include <string_view>

namespace orvex::frontend {

// A text as it is read: capitals, TABs as blanks.
std::string capitals(std::string_view text);

// A text without anything at its end that is read as blanks.
std::string_view without_blanks_at_end(std::string_view text);

// Are two texts the same as read?
bool same_when_read(std::string_view a, std::string_view b);

}  // namespace orvex::frontend
