#include "frontend/base/wrapping.h"

#include "frontend/base/bytes.h"

#include <algorithm>

namespace orvex::frontend {

std::vector<std::string> wrapped(std::string_view text, std::size_t width) {
    std::vector<std::string> lines(1);
    for (std::size_t at = text.find_first_not_of(' '); at < text.size();) {
        const std::size_t end = std::min(text.find(' ', at), text.size());
        const std::string_view word = text.substr(at, end - at);
        if (!lines.back().empty() && width_of(lines.back()) + 1 + width_of(word) > width)
            lines.emplace_back();
        if (!lines.back().empty()) lines.back() += ' ';
        lines.back() += word;
        at = text.find_first_not_of(' ', end);
    }
    return lines;
}

}  // namespace orvex::frontend
