// The accounts of the models of a printed text.
#pragma once

#include "frontend/accounts/balance.h"
#include "frontend/cli/options.h"
#include "frontend/expansion/data.h"
#include "frontend/findings/finding.h"

#include <string>
#include <vector>

namespace orvex::frontend {

// Reads the file at `given`, which messages call `path`. The data only give levels. Adds findings
// about what is wrong. Returns the models that could be read, or the one of --model.
std::vector<ModelAccounts> balance_printed(const std::string& given, const std::string& path,
                                           DataFiles& files, const Options& options,
                                           std::vector<Finding>& findings);

}  // namespace orvex::frontend
