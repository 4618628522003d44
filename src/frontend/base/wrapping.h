// Wraps text to terminal lines.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// The words of a text in lines of at most this width; a text without words gives one empty line. A
// longer word gets its own line.
std::vector<std::string> wrapped(std::string_view text, std::size_t width);

}  // namespace orvex::frontend
