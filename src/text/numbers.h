// Numbers as text: in a fixed width, or in as many columns as they take.
#pragma once

#include "text/bytes.h"
#include "text/text.h"

#include <cstring>

namespace orvex {

// How a number is written in a fixed width: right-aligned after blanks, or with leading zeros. A
// number that does not fit, sign included, is written as asterisks.
enum class Fill : char { blanks = ' ', zeros = '0' };
template <int Width>
void write_number(char* columns, int value, Fill fill) {
    std::memset(columns, static_cast<char>(fill), Width);
    const bool negative = value < 0;
    auto rest = negative ? 0U - static_cast<unsigned>(value) : static_cast<unsigned>(value);
    int first = Width;  // columns from here on have digits
    do {
        columns[--first] = static_cast<char>('0' + rest % 10);
        rest /= 10;
    } while (rest != 0 && first > 0);
    // Zeros fill all the columns with digits, so there is never room for a sign.
    const bool sign_fits = fill == Fill::blanks && first > 0;
    if (rest != 0 || (negative && !sign_fits)) {
        std::memset(columns, '*', Width);
    } else if (negative) {
        columns[first - 1] = '-';
    }
}

template <int Width>
Text<Width> right_aligned(int value) {
    Bytes<Width> columns;
    write_number<Width>(columns.data(), value, Fill::blanks);
    return whole(columns);
}

template <int Width>
Text<Width> zero_filled(int value) {
    Bytes<Width> columns;
    write_number<Width>(columns.data(), value, Fill::zeros);
    return whole(columns);
}

// The number in as many columns as it needs.
Text<11> decimal(int value);

}  // namespace orvex
