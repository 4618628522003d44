// The models of a file that a command applies to.
#pragma once

#include "frontend/findings/finding.h"
#include "frontend/syntax/source.h"

#include <string>
#include <vector>

namespace orvex::frontend {

struct Selection {
    std::vector<Index> models;  // to be translated, as numbers in the tree
    std::vector<bool> skipped;  // for each model of the tree
};

// Chooses the models with that name, in any case; all if it is empty. A model is left out, with a
// finding, if its outputs cannot be named after it, or another one has the same name.
Selection select_models(const Source& source, const std::string& wanted,
                        std::vector<Finding>& findings);

}  // namespace orvex::frontend
