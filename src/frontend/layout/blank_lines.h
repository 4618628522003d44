// The blank lines of a model.
#pragma once

#include "frontend/layout/rows.h"

#include <vector>

namespace orvex::frontend {

// Adds the edits, in no order, that reduce consecutive blank lines to one and put one before each
// block and the comments above its keyword. Options need none between them, and those in a
// constraint stay.
void set_blank_lines(const Text& text, Index model, std::vector<Edit>& edits);

}  // namespace orvex::frontend
