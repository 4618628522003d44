// What an argument looks like.
#pragma once

#include <string_view>

namespace orvex::frontend {

// Is an argument that is read as a set not valid as the name of one? An element in wrong quotes, a
// blank argument and one with other dashes or blanks have their own findings.
bool is_invalid_set(std::string_view argument);

}  // namespace orvex::frontend
