// The codes in docs/messages.md for the faults of the notation.
#pragma once

#include "notation/fault.h"

#include <string_view>

namespace orvex::frontend {

// The code of a fault, "label-missing"; empty for none.
std::string_view code_of(notation::Fault fault);

}  // namespace orvex::frontend
