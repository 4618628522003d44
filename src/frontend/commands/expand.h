// orvex expand: prints models as the solver reads them.
#pragma once

#include "frontend/cli/options.h"

namespace orvex::frontend {

// Returns the exit status. Throws UsageError.
int run_expand(const Options& options);

}  // namespace orvex::frontend
