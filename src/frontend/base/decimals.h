// Numbers as texts.
#pragma once

#include <string>

namespace orvex::frontend {

// The shortest text that is read back as the same number: "100", "1e+05", "0.1". That of -0 is "0".
std::string shortest_decimal(double number);

// At most `digits` significant digits, for people: "0.333333".
std::string rounded_decimal(double number, int digits);

}  // namespace orvex::frontend
