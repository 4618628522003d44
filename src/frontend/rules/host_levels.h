// Levels that the host's text gives the variables of a model.
#pragma once

#include "frontend/model/model.h"
#include "frontend/syntax/source.h"

namespace orvex::frontend {

// Does the host's text outside of the models give a variable of the model a level, or fix it, other
// than the one that it has by default?
bool sets_levels(const Source& source, const Model& model);

}  // namespace orvex::frontend
