// One command over all its files.
#pragma once

#include "frontend/cli/options.h"

namespace orvex::frontend {

// Runs translate, check, info or graph. Returns the exit status. Throws UsageError where the
// command line is seen to be wrong before anything is shown.
int run_command(const Options& options);

}  // namespace orvex::frontend
