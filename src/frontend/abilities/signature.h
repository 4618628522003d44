// The sets of a name within whose parentheses one writes.
#pragma once

#include "frontend/abilities/document.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orvex::frontend {

struct Signature {
    std::string text;                            // "PY(R,S)"
    std::vector<std::pair<int, int>> arguments;  // the places of the sets in it
    int active = 0;                              // the argument that is being written
    std::string description;
};

// Nothing where the offset is in no list, or the name has no sets. Precondition: the document is
// read.
std::optional<Signature> signature_at(const Document& document, Offset offset);

}  // namespace orvex::frontend
