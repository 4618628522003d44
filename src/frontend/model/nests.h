// The nests that a block's opening record defines.
#pragma once

#include "frontend/model/model.h"

#include <string_view>

namespace orvex::frontend {

// Adds the nests that every block has: S, and T for outputs.
void add_nest_roots(Model& model, Index block);

// Adds the nest of a field of the opening record, such as VA(S): its parent is the nest in
// parentheses.
void add_nest(Model& model, std::string_view bytes, Index block, const Field& field);

// The nest with that name in a block, or null.
const Nest* find_nest(const Model& model, Index block, std::string_view name);

}  // namespace orvex::frontend
