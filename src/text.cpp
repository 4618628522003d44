#include "text.h"

#include <charconv>

namespace orvex {

void copy_long_piece(char* to, View piece) { std::memmove(to, piece.data(), piece.size()); }

int compare_padded(View a, View b) {
    const std::size_t length = std::max(a.size(), b.size());
    for (std::size_t i = 0; i < length; ++i) {
        const auto left = static_cast<unsigned char>(i < a.size() ? a[i] : blank_char);
        const auto right = static_cast<unsigned char>(i < b.size() ? b[i] : blank_char);
        if (left != right) return left < right ? -1 : 1;
    }
    return 0;
}

Text<11> decimal(int value) {
    Bytes<11> digits;
    const auto end = std::to_chars(digits.begin(), digits.end(), value).ptr;
    return View(digits.data(), static_cast<std::size_t>(end - digits.data()));
}

}  // namespace orvex
