// From the tree of a file to what one of its models means.
#pragma once

#include "frontend/model/model.h"

#include <string_view>

namespace orvex::frontend {

// Builds a model of the tree of `bytes`. `opening_is_open` says whether the model that the
// translator has translated before ended within a block's opening record: a model that begins with
// "+" goes on with that.
Model build_model(std::string_view bytes, const Tree& tree, Index model, bool opening_is_open);

}  // namespace orvex::frontend
