// The levels of findings.
#pragma once

#include "frontend/cli/options.h"
#include "frontend/findings/finding.h"

#include <vector>

namespace orvex::frontend {

// Gives each finding that is not an error the level that the options ask for, and drops those that
// are off.
void apply_levels(const Options& options, std::vector<Finding>& findings);

}  // namespace orvex::frontend
