// orvex graph: draws models.
#pragma once

#include "frontend/cli/options.h"

namespace orvex::frontend {

// Returns the exit status. Throws UsageError.
int run_graph(const Options& options);

}  // namespace orvex::frontend
