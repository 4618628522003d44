// The one standard layout of a model. Only blanks, line breaks and the case of letters change; the
// translator's output does not.
#pragma once

#include "frontend/findings/finding.h"
#include "frontend/model/model.h"
#include "frontend/syntax/source.h"

#include <vector>

namespace orvex::frontend {

// Only a model without errors is laid out: text that is wrong may not mean what it is read as.
bool may_be_laid_out(const Model& model);

// The edits that lay out a model of the file, in order and not touching one another; only offsets
// and texts are set. Precondition: may_be_laid_out.
std::vector<Edit> layout_of(const Source& source, const Model& model);

// The edits that lay out some lines of a model, counted from 1, both inclusive: all runs of entries
// and names that the lines touch. Same precondition.
std::vector<Edit> layout_of_lines(const Source& source, const Model& model, int first, int last);

// The edits for the blanks in one line. Same precondition.
std::vector<Edit> layout_of_line(const Source& source, const Model& model, int line);

}  // namespace orvex::frontend
