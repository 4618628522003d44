// Where a printed line comes from: the number of the line, or what its maker likes, such as two
// offsets.
#pragma once

#include <cstdint>

namespace orvex::frontend {

using LinePlace = std::uint64_t;

}  // namespace orvex::frontend
