// The names of a model as a table.
#pragma once

#include "frontend/model/model.h"
#include "frontend/syntax/source.h"

#include <string>

namespace orvex::frontend {

// A model of the source: its names by kind, in a table of at most 100 columns, and the variables
// that have constraints.
std::string info_text(const Source& source, const Model& model, bool colour);

}  // namespace orvex::frontend
