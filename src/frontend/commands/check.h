// orvex check: what is wrong with models.
#pragma once

#include "frontend/cli/options.h"

namespace orvex::frontend {

// Returns the exit status. Throws UsageError.
int run_check(const Options& options);

}  // namespace orvex::frontend
