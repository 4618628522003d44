#include "text.h"

#include <charconv>

namespace orvex {

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
    const Text<11> digits = decimal(value);
    // Zeros fill all the columns with digits, so a sign never fits beside them.
    if (digits.length() > width || (fill == Fill::zeros && value < 0)) {
        std::fill_n(columns, width, '*');
        return;
    }
    std::fill_n(columns, width - digits.length(), static_cast<char>(fill));
    digits.view().copy(columns + (width - digits.length()), View::npos);
}

}  // namespace orvex
