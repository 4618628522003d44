#include "frontend/base/decimals.h"

#include <array>
#include <charconv>

namespace orvex::frontend {

namespace {

constexpr std::size_t most_characters = 64;

}  // namespace

std::string shortest_decimal(double number) {
    std::array<char, most_characters> text{};
    const double value = number == 0 ? 0 : number;
    return {text.data(), std::to_chars(text.data(), text.data() + text.size(), value).ptr};
}

std::string rounded_decimal(double number, int digits) {
    std::array<char, most_characters> text{};
    const double value = number == 0 ? 0 : number;
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value,
                                   std::chars_format::general, digits);
    return {text.data(), end.ptr};
}

}  // namespace orvex::frontend
