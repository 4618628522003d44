// Names of parameters and sets, and words of equations, that nothing else in the file knows.
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
    std::string near;         // a name that may be meant; empty where none is near
};

// The unknown names of a model, in the order in which they first occur. `is_skipped` says for each
// symbol whether something else is said about it. A name is unknown
// - where the host's text declares its like: it is not in that text, but most others are, or
// - in an equation, where it occurs once in the file, and a variable with as many sets is near.
std::vector<UnknownName> read_unknown(const Source& source, const Model& model,
                                      const HostText& host, const std::vector<bool>& is_skipped);

}  // namespace orvex::frontend
