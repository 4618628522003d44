// Where labels of nests are, and sets in labels such as "R.TL".
#pragma once

#include "frontend/abilities/document.h"

#include <string_view>
#include <vector>

namespace orvex::frontend {

struct NestLabel {
    Range range;         // "VA" of "VA(S)"
    bool opens = false;  // in the block's opening record, not in parentheses
};

// The labels of a block's nests, in the order of the text: those that open a nest, their parents in
// parentheses, and those that put an entry into a nest. Precondition: the document has been read.
std::vector<NestLabel> nest_labels_of(const Document& document, const Model& model, Index block);

// The set in a label made from its elements: "R" in "R.TL"; otherwise an empty range.
Range set_in_label(std::string_view bytes, Range label);

// Where a set occurs in the labels of a model. Its case does not matter.
std::vector<Range> labels_of_set(const Document& document, const Model& model,
                                 std::string_view set);

}  // namespace orvex::frontend
