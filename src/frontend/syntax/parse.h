// From the bytes of a file to its tree.
#pragma once

#include "frontend/syntax/tree.h"

#include <string_view>

namespace orvex::frontend {

// Files larger than this are not read.
constexpr std::size_t largest_file = 0xFFFF0000;

// The tree of a file. Precondition: not more than largest_file bytes. Time and memory grow with the
// bytes alone.
Tree parse(std::string_view bytes);

}  // namespace orvex::frontend
