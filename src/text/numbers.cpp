#include "text/numbers.h"

#include <charconv>

namespace orvex {

Text<11> decimal(int value) {
    Bytes<11> digits;
    const auto end = std::to_chars(digits.begin(), digits.end(), value).ptr;
    return View(digits.data(), static_cast<std::size_t>(end - digits.data()));
}

}  // namespace orvex
