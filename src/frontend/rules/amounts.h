// Quantities that are plain numbers.
#pragma once

#include <string_view>

namespace orvex::frontend {

enum class Amount { unknown, negative, zero, positive };

// The amount of a value, without parentheses around it; unknown if it is not a single number.
Amount amount_of(std::string_view value);

}  // namespace orvex::frontend
