// From the tree of a file to what its models mean.
#pragma once

#include "frontend/model/model.h"

#include <string_view>
#include <vector>

namespace orvex::frontend {

// Builds a model of the tree of `bytes`. `opening_is_open` says whether the model that the
// translator has translated before ended within a block's opening record: a model that begins with
// "+" goes on with that.
Model build_model(std::string_view bytes, const Tree& tree, Index model, bool opening_is_open);

// Builds all models of a file, one after another.
std::vector<Model> build_models(std::string_view bytes, const Tree& tree);

}  // namespace orvex::frontend
