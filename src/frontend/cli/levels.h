// The levels of findings.
#pragma once

#include "frontend/cli/options.h"
#include "frontend/findings/finding.h"

#include <string_view>
#include <vector>

namespace orvex::frontend {

// Sets each finding that is not an error to the level that the options ask for, and drops those
// that are off.
void apply_levels(const Options& options, std::vector<Finding>& findings);

// Is a finding with that code and default level off?
bool is_off(const Options& options, std::string_view code, Severity level);

}  // namespace orvex::frontend
