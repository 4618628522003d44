// The letters of a model: keywords and labels in capitals, declared names as in their declaration.
#pragma once

#include "frontend/layout/rows.h"
#include "frontend/model/model.h"

#include <vector>

namespace orvex::frontend {

// Adds the edits to the letters of a model, in no order.
void set_letters(const Text& text, const Model& model, std::vector<Edit>& edits);

}  // namespace orvex::frontend
