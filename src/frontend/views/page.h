// The page width for which tables are made.
#pragma once

#include <cstddef>

namespace orvex::frontend {

constexpr std::size_t page_width = 100;  // in columns

}  // namespace orvex::frontend
