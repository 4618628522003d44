// The models of a file that a command is for.
#pragma once

#include "frontend/findings/finding.h"
#include "frontend/syntax/source.h"

#include <string>
#include <vector>

namespace orvex::frontend {

struct Selection {
    std::vector<Index> models;  // those that are to be translated, as numbers of the tree
    std::vector<bool> skipped;  // for each model of the tree
};

// Chooses the models of that name, whatever its case; all where it is empty. One whose name cannot
// be that of its outputs, or that another one has, is left out, with a finding.
Selection select_models(const Source& source, const std::string& wanted,
                        std::vector<Finding>& findings);

}  // namespace orvex::frontend
