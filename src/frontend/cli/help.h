// The help texts.
#pragma once

#include "frontend/cli/options.h"

#include <string>

namespace orvex::frontend {

// For a command and its options or, if it is none, for the program.
std::string help_of(Command command);

}  // namespace orvex::frontend
