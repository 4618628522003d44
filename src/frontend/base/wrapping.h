// Texts in lines of a terminal.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// The words of a text in lines of at most this width; one empty line for a text without words. A
// longer word has a line of its own.
std::vector<std::string> wrapped(std::string_view text, std::size_t width);

}  // namespace orvex::frontend
