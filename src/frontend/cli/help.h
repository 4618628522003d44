// The help texts.
#pragma once

#include "frontend/cli/options.h"

#include <string>

namespace orvex::frontend {

// Of a command and its options, or, for none, of the program.
std::string help_of(Command command);

}  // namespace orvex::frontend
