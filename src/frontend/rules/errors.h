// The errors at which the translator stops, as findings.
#pragma once

#include "frontend/findings/finding.h"
#include "frontend/model/model.h"
#include "frontend/syntax/source.h"

#include <vector>

namespace orvex::frontend {

// Adds a finding for each error of the model: severity error, code, place, further places, where
// the name was declared, what may have been meant and what to do.
void add_errors(const Source& source, const Model& model, std::vector<Finding>& findings);

}  // namespace orvex::frontend
