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

void write_number(char* columns, int width, int value, Fill fill) {
    auto rest = value < 0 ? 0U - static_cast<unsigned>(value) : static_cast<unsigned>(value);
    int first = width;  // columns from here on hold digits
    do {
        columns[--first] = static_cast<char>('0' + rest % 10);
        rest /= 10;
    } while (rest != 0 && first > 0);
    // Zeros fill all the columns with digits, so a sign never fits beside them.
    const bool fits = rest == 0 && (value >= 0 || (fill == Fill::blanks && first > 0));
    if (!fits) {
        std::fill_n(columns, width, '*');
        return;
    }
    if (value < 0) columns[--first] = '-';
    std::fill_n(columns, first, static_cast<char>(fill));
}

}  // namespace orvex
