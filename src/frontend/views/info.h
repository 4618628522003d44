// The names of a model.
#pragma once

#include "frontend/model/economy.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// The names by kind: sectors, commodities, consumers, auxiliary variables, report variables,
// parameters, sets; within each in the order of the declarations, then of the alphabet.
std::vector<const Name*> ordered_names(const Economy& economy);

// The names as a table that fits 100 columns. `path` is the file of the model, as it is shown.
std::string info_text(const Economy& economy, std::string_view path, bool colour);

}  // namespace orvex::frontend
