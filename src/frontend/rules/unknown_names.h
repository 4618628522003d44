// Names of parameters and sets, and words of equations, that are unknown in the rest of the file.
#pragma once

#include "frontend/model/model.h"
#include "frontend/rules/host_text.h"
#include "frontend/syntax/source.h"

#include <string>
#include <vector>

namespace orvex::frontend {

struct UnknownName {
    Index symbol;
    std::vector<Index> uses;  // in Model::uses
    std::string near;         // a similar name; empty if there is none
};

// The unknown names of a model, in the order in which they first occur. `is_skipped` says for each
// symbol whether it has another finding. A name is unknown
// - if the host's text declares such names, and has most others but not this one, or
// - if it occurs in an equation, once in the file, and is similar to a variable with as many sets.
std::vector<UnknownName> read_unknown(const Source& source, const Model& model,
                                      const HostText& host, const std::vector<bool>& is_skipped);

}  // namespace orvex::frontend
