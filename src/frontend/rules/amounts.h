// Quantities that are plain numbers.
#pragma once

#include <string_view>

namespace orvex::frontend {

enum class Amount { unknown, negative, zero, positive };

// What a value is, parentheses around it left out; unknown where it is not a single number.
Amount amount_of(std::string_view value);

}  // namespace orvex::frontend
