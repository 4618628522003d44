// orvex info: lists the names of models.
#pragma once

#include "frontend/cli/options.h"

namespace orvex::frontend {

// Returns the exit status. Throws UsageError.
int run_info(const Options& options);

}  // namespace orvex::frontend
