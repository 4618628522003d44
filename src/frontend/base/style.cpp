#include "frontend/base/style.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace orvex::frontend {

std::string styled(Style style, const std::string& text, bool colour) {
    constexpr std::array<std::string_view, 7> codes{
        "", "\x1b[1m", "\x1b[1;31m", "\x1b[1;33m", "\x1b[1;32m", "\x1b[1;36m", "\x1b[1;34m"};
    if (!colour || text.empty() || style == Style::plain) return text;
    std::string out(codes.at(static_cast<std::size_t>(style)));
    return out.append(text).append("\x1b[0m");
}

}  // namespace orvex::frontend
