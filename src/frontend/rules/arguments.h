// What an argument looks like.
#pragma once

#include <string_view>

namespace orvex::frontend {

// Can an argument that is read as a set not be the name of one? An element in wrong quotes, a blank
// argument and one with other dashes or blanks have findings of their own.
bool is_invalid_set(std::string_view argument);

}  // namespace orvex::frontend
