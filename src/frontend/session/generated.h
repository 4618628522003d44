// The translator's output for the models of a file.
#pragma once

#include "frontend/expansion/expand.h"
#include "frontend/session/session.h"

#include <vector>

namespace orvex::frontend {

// The models without errors, in the order of the file, with their generator files. Precondition:
// models and outputs were wanted. They refer to the file.
std::vector<GeneratedModel> good_models(const File& file);

}  // namespace orvex::frontend
