// The sets of the name in whose parentheses the user is typing.
#pragma once

#include "frontend/abilities/document.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orvex::frontend {

struct Signature {
    std::string text;                            // "PY(R,S)"
    std::vector<std::pair<int, int>> arguments;  // the places of the sets in `text`
    int active = 0;                              // the argument being typed
    std::string description;
};

// Nothing if the offset is not in an argument list, or the name has no sets. Precondition: the
// document has been read.
std::optional<Signature> signature_at(const Document& document, Offset offset);

}  // namespace orvex::frontend
