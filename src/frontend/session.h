// One command over all its files.
#pragma once

#include "frontend/options.h"

namespace orvex::frontend {

// Runs translate, check, info or graph. Returns the exit status. Throws UsageError where the files show
// that the command line is wrong.
int run_command(const Options& options);

}  // namespace orvex::frontend
