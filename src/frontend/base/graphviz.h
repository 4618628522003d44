// Graphviz, which draws dot texts.
#pragma once

#include <chrono>
#include <string>

namespace orvex::frontend {

enum class Drawing { done, failed, too_slow };

// Draws a dot text as SVG. If Graphviz cannot be run or fails, the reason is set; if it takes
// longer than the limit, it is ended.
Drawing draw_svg(const std::string& dot, std::chrono::milliseconds limit, std::string& svg,
                 std::string& reason);

}  // namespace orvex::frontend
