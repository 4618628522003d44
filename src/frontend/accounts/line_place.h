// Where a printed line comes from: its line number, or a value chosen by the caller, such as two
// packed offsets.
#pragma once

#include <cstdint>

namespace orvex::frontend {

using LinePlace = std::uint64_t;

}  // namespace orvex::frontend
