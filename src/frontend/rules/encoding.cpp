#include "frontend/rules/encoding.h"

#include "text/characters.h"

#include <algorithm>
#include <cstddef>

namespace orvex::frontend {

namespace {

// Is there a zero next to nearly each letter, on the same side?
bool has_zeros_beside_letters(std::string_view bytes) {
    constexpr std::size_t looked_at = 1000;
    constexpr std::size_t fewest = 8;
    bytes = bytes.substr(0, looked_at);
    std::size_t zeros[2] = {0, 0};
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (bytes[i] == '\0') ++zeros[i % 2];
    }
    const std::size_t most = std::max(zeros[0], zeros[1]);
    return std::min(zeros[0], zeros[1]) == 0 && most >= fewest && 3 * most > bytes.size();
}

}  // namespace

Encoding encoding_of(std::string_view bytes) {
    const bool is_marked = bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF");
    if (is_marked || has_zeros_beside_letters(bytes)) return Encoding::utf16;
    if (bytes.find('\n') != std::string_view::npos) return Encoding::lines;
    const std::size_t end = bytes.find(carriage_return);
    const bool has_second = end != std::string_view::npos && end + 1 < bytes.size();
    return has_second ? Encoding::carriage_returns : Encoding::lines;
}

}  // namespace orvex::frontend
