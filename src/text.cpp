#include "text.h"

#include <charconv>

namespace orvex {

namespace {

// The first and the last characters as two numbers, which may overlap.
template <typename Number>
void copy_ends(char* to, View piece) {
    const std::size_t last = piece.size() - sizeof(Number);
    Number first_number = 0;
    Number last_number = 0;
    std::memcpy(&first_number, piece.data(), sizeof(Number));
    std::memcpy(&last_number, piece.data() + last, sizeof(Number));
    std::memcpy(to, &first_number, sizeof(Number));
    std::memcpy(to + last, &last_number, sizeof(Number));
}

}  // namespace

// Most pieces are so short that a call of memmove would cost more than the copying.
void copy_piece(char* to, View piece) {
    const std::size_t size = piece.size();
    if (size > 16) {
        std::memmove(to, piece.data(), size);
    } else if (size >= 8) {
        copy_ends<std::uint64_t>(to, piece);
    } else if (size >= 4) {
        copy_ends<std::uint32_t>(to, piece);
    } else if (size >= 2) {
        copy_ends<std::uint16_t>(to, piece);
    } else if (size == 1) {
        *to = piece.front();
    }
}

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
