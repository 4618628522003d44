// Terminal colours.
#pragma once

#include <string>

namespace orvex::frontend {

enum class Style { plain, bold, red, yellow, green, cyan, blue };

// The text in a colour and bold; unchanged if `colour` is false.
std::string styled(Style style, const std::string& text, bool colour);

}  // namespace orvex::frontend
