// Graphviz, which draws dot texts.
#pragma once

#include <string>

namespace orvex::frontend {

// Draws a dot text as SVG. False, with the reason, if Graphviz cannot be run or fails.
bool draw_svg(const std::string& dot, std::string& svg, std::string& reason);

}  // namespace orvex::frontend
