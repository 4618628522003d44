// orvex translate: writes the generator and header files of models.
#pragma once

#include "frontend/cli/options.h"

namespace orvex::frontend {

// Returns the exit status. Throws UsageError.
int run_translate(const Options& given);

}  // namespace orvex::frontend
