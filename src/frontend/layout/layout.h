// The one way to lay out a model. What changes is blanks, line breaks and the case of letters; what
// the translator makes of the model does not.
#pragma once

#include "frontend/findings/finding.h"
#include "frontend/model/model.h"
#include "frontend/syntax/source.h"

#include <vector>

namespace orvex::frontend {

// Only a model without an error is laid out: what is wrong may be meant otherwise than it is read.
bool may_be_laid_out(const Model& model);

// The edits that lay out a model of the file, in their order and apart from one another; only
// offsets and texts are set. Precondition: it may be laid out.
std::vector<Edit> layout_of(const Source& source, const Model& model);

// The edits that lay out some lines of a model, from 1, both inclusive: those of the whole runs of
// entries and names that the lines touch. The same precondition.
std::vector<Edit> layout_of_lines(const Source& source, const Model& model, int first, int last);

// The edits of the blanks in one line. The same precondition.
std::vector<Edit> layout_of_line(const Source& source, const Model& model, int line);

}  // namespace orvex::frontend
