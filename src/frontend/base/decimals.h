// Numbers as text.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orvex::frontend {

// The shortest text that is read back as the same number: "100", "1e+05", "0.1". For -0 it is "0".
std::string shortest_decimal(double number);

// At most `digits` significant digits, for readers: "0.333333".
std::string rounded_decimal(double number, int digits);

// The number that the whole text represents: "-1.5", ".5", "1e-3"; a number too small to represent
// is 0. None for any other text, and for a number that is too large.
std::optional<double> decimal_in(std::string_view text);

}  // namespace orvex::frontend
