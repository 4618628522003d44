// What is around the models of a file: the host's own text and its comments.
#pragma once

#include "frontend/syntax/source.h"

namespace orvex::frontend {

// The first record after the end of a model, and before the next model, that begins with a keyword
// of a block and is in no comment of the host; no_index where there is none.
Index block_after_end(const Source& source, Index model);

}  // namespace orvex::frontend
