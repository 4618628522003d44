// The accounts of a model with its data.
#pragma once

#include "frontend/accounts/balance.h"
#include "frontend/cli/options.h"
#include "frontend/expansion/expand.h"
#include "frontend/findings/finding.h"

#include <optional>
#include <vector>

namespace orvex::frontend {

// Prints the model only for its accounts. Adds findings about what is wrong. None if the model
// cannot be printed.
std::optional<ModelAccounts> balance_model(const GeneratedModel& generated, DataFiles& files,
                                           const Options& options, std::vector<Finding>& findings);

}  // namespace orvex::frontend
