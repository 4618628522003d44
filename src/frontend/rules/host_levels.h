// Levels that the host's text gives to the variables of a model.
#pragma once

#include "frontend/model/model.h"
#include "frontend/syntax/source.h"

namespace orvex::frontend {

// Does the host's text outside the models set or fix a level of one of the model's variables that
// differs from its default?
bool sets_levels(const Source& source, const Model& model);

}  // namespace orvex::frontend
