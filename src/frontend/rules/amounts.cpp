#include "frontend/rules/amounts.h"

#include "text/characters.h"

#include <algorithm>
#include <cstddef>

namespace orvex::frontend {

namespace {

// Cuts off the leading digits.
std::string_view cut_digits(std::string_view& text) {
    const auto* const end = std::find_if_not(text.begin(), text.end(), is_digit);
    const std::string_view digits(text.data(), static_cast<std::size_t>(end - text.begin()));
    text.remove_prefix(digits.size());
    return digits;
}

bool cut_sign(std::string_view& text) {
    const bool is_negative = text.starts_with('-');
    if (is_negative || text.starts_with('+')) text.remove_prefix(1);
    return is_negative;
}

bool is_exponent(std::string_view text) {
    if (!text.starts_with('E') && !text.starts_with('e')) return false;
    text.remove_prefix(1);
    cut_sign(text);
    return !cut_digits(text).empty() && text.empty();
}

std::string_view without_parentheses(std::string_view value) {
    while (value.size() > 1 && value.front() == '(' && value.back() == ')')
        value = value.substr(1, value.size() - 2);
    return value;
}

}  // namespace

Amount amount_of(std::string_view value) {
    std::string_view text = without_parentheses(value);
    const bool is_negative = cut_sign(text);
    const std::string_view whole = cut_digits(text);
    if (text.starts_with('.')) text.remove_prefix(1);
    const std::string_view part = cut_digits(text);
    const bool is_number = whole.size() + part.size() > 0 && (text.empty() || is_exponent(text));
    if (!is_number) return Amount::unknown;
    const auto is_zero = [](char c) { return c == '0'; };
    if (std::all_of(whole.begin(), whole.end(), is_zero) &&
        std::all_of(part.begin(), part.end(), is_zero))
        return Amount::zero;
    return is_negative ? Amount::negative : Amount::positive;
}

}  // namespace orvex::frontend
