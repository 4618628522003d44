// Files that cannot be read as lines of text.
#pragma once

#include <string_view>

namespace orvex::frontend {

enum class Encoding {
    lines,
    utf16,
    carriage_returns,  // as line ends, and no line feed
};

Encoding encoding_of(std::string_view bytes);

}  // namespace orvex::frontend
