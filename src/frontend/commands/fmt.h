// orvex fmt: lays models out in the standard way.
#pragma once

#include "frontend/cli/options.h"

namespace orvex::frontend {

// Returns the exit status. Throws UsageError.
int run_fmt(const Options& options);

}  // namespace orvex::frontend
