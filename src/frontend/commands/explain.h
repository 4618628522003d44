// orvex explain and orvex codes.
#pragma once

#include <string>
#include <string_view>

namespace orvex::frontend {

// The entry of a code as text for a terminal, with its examples; empty if the code is unknown.
std::string explain(std::string_view code, bool colour);

// All codes, each with its message on one line.
std::string list_codes();

}  // namespace orvex::frontend
