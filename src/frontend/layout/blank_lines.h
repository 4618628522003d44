// The blank lines of a model.
#pragma once

#include "frontend/layout/rows.h"

#include <vector>

namespace orvex::frontend {

// Adds the edits, in no order, that leave one of several blank lines and put one before each block
// and the comments over its keyword; options need none between one another, and those of a
// constraint stay.
void set_blank_lines(const Text& text, Index model, std::vector<Edit>& edits);

}  // namespace orvex::frontend
