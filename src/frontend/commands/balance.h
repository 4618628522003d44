// orvex balance: checks whether the accounts of models balance.
#pragma once

#include "frontend/cli/options.h"

namespace orvex::frontend {

// Returns the exit status. Throws UsageError.
int run_balance(const Options& options);

}  // namespace orvex::frontend
