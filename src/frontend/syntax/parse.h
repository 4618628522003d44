// From the bytes of a file to its tree.
#pragma once

#include "frontend/syntax/tree.h"

#include <cstddef>
#include <string_view>

namespace orvex::frontend {

// Larger files are not read, and input without an end is read only up to this size.
constexpr std::size_t largest_file = std::size_t{256} << 20U;

// The tree of a file. Precondition: at most largest_file bytes. Time and memory are linear in the
// size of the file.
Tree parse(std::string_view bytes);

}  // namespace orvex::frontend
