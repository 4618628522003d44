#include "frontend/base/decimals.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdlib>

namespace orvex::frontend {

namespace {

constexpr std::size_t most_characters = 64;
constexpr std::string_view all_digits = "0123456789";

// Takes the digits off the start of a text. False if there are none.
bool take_digits(std::string_view& text) {
    const std::size_t count = std::min(text.find_first_not_of(all_digits), text.size());
    text.remove_prefix(count);
    return count > 0;
}

bool take_one_of(std::string_view characters, std::string_view& text) {
    const bool is_there = !text.empty() && characters.find(text.front()) != std::string_view::npos;
    if (is_there) text.remove_prefix(1);
    return is_there;
}

bool is_decimal(std::string_view text) {
    take_one_of("-", text);
    const bool has_whole = take_digits(text);
    const bool has_fraction = take_one_of(".", text) && take_digits(text);
    if (!has_whole && !has_fraction) return false;
    if (!take_one_of("eE", text)) return text.empty();
    take_one_of("+-", text);
    return take_digits(text) && text.empty();
}

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

// std::from_chars would do, but not all standard libraries have it for floating-point numbers.
std::optional<double> decimal_in(std::string_view text) {
    if (!is_decimal(text)) return std::nullopt;
    const double number = std::strtod(std::string(text).c_str(), nullptr);
    return std::isfinite(number) ? std::optional(number) : std::nullopt;
}

}  // namespace orvex::frontend
