// orvex check: finds errors in models.
#pragma once

#include "frontend/cli/options.h"

namespace orvex::frontend {

// Returns the exit status. Throws UsageError.
int run_check(const Options& options);

}  // namespace orvex::frontend
