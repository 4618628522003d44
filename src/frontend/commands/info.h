// The names of a model.
#pragma once

#include "frontend/reading/economy.h"

#include <string>

namespace orvex::frontend {

// The names as a table: sectors, commodities, consumers, auxiliary variables, report variables,
// parameters, sets; within each in the order of the declarations, else of the alphabet.
std::string info_text(const Economy& economy, bool colour);

}  // namespace orvex::frontend
