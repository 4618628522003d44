// The parts of a text that belong together: what can be folded, and what can be selected.
#pragma once

#include "frontend/abilities/document.h"

#include <vector>

namespace orvex::frontend {

struct Fold {
    Range range;  // from the start of its first line to the end of its last one
    bool is_comment = false;
};

// The lines of records from `first` up to `end`, without the line end of the last one.
Range lines_of_records(const Tree& tree, Index first, Index end);

// The record after the last one of a block, not counting blank lines and comments at its end.
Index end_of_block(const Tree& tree, Index block, Index model_end);

// Models, blocks, and comments of two lines or more. Precondition: the document has been read.
std::vector<Fold> folds_of(const Document& document);

// The parts of the text around an offset, from the smallest to the whole text; each is larger than
// the previous one. Precondition: the document has been read.
std::vector<Range> parts_around(const Document& document, Offset offset);

}  // namespace orvex::frontend
