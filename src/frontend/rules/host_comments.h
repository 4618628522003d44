// The text around the models of a file: the host's own text and its comments.
#pragma once

#include "frontend/syntax/source.h"

namespace orvex::frontend {

// The first record after the end of a model, and before the next model, that begins with the
// keyword of a block and is not in a comment of the host; no_index if there is none.
Index block_after_end(const Source& source, Index model);

}  // namespace orvex::frontend
