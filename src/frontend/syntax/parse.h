// From the bytes of a file to its tree.
#pragma once

#include "frontend/syntax/tree.h"

#include <cstddef>
#include <string_view>

namespace orvex::frontend {

// Files larger than this are not read, and what has no end is read no further.
constexpr std::size_t largest_file = std::size_t{256} << 20U;

// The tree of a file. Precondition: not more than largest_file bytes. Time and memory grow with the
// bytes alone.
Tree parse(std::string_view bytes);

}  // namespace orvex::frontend
