// The output of balance for a model, whether a host printed it or this program did.
#pragma once

#include "frontend/accounts/account_findings.h"
#include "frontend/accounts/balance.h"
#include "frontend/cli/options.h"
#include "frontend/findings/finding.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

BalanceSettings settings_of(const Options& options, Levels levels);

// The text before the first model: the head of a CSV file.
std::string balance_head(const Options& options);

// A model in the requested --format. `number` is that of the model, from 0, over all files.
std::string shown_accounts(const Options& options, std::string_view path, std::size_t number,
                           const ModelAccounts& model);

}  // namespace orvex::frontend
