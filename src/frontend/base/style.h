// Colours of a terminal.
#pragma once

#include <string>

namespace orvex::frontend {

enum class Style { plain, bold, red, yellow, green, cyan, blue };

// The text in a colour, all of them bold; unchanged where `colour` is off.
std::string styled(Style style, const std::string& text, bool colour);

}  // namespace orvex::frontend
