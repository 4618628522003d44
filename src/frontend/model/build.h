// From the tree of a file to the meaning of its models.
#pragma once

#include "frontend/model/model.h"

#include <string_view>
#include <vector>

namespace orvex::frontend {

// Builds a model from the tree of `bytes`. `opening_is_open` says whether the model that the
// translator translated before it ended within a block's opening record: if this model begins with
// "+", it continues that record.
Model build_model(std::string_view bytes, const Tree& tree, Index model, bool opening_is_open);

// Builds all models of a file, in order.
std::vector<Model> build_models(std::string_view bytes, const Tree& tree);

}  // namespace orvex::frontend
