// The models of a text with their blocks and names, as an editor lists them.
#pragma once

#include "frontend/abilities/document.h"

#include <optional>
#include <string>
#include <vector>

namespace orvex::frontend {

struct OutlineItem {
    std::string name;    // "$SECTORS", "$PROD:Y(S)", "PY(S)"; never empty
    std::string detail;  // the description of a name
    // What it is: a name of a kind, or a block about names of a kind; nothing for a model, and for
    // a block of declarations or reports.
    std::optional<Kind> kind;
    bool is_model = false;
    Range range;      // of all of it
    Range selection;  // of its name, within the range
    std::vector<OutlineItem> items;
};

// The models in the order of the text, their blocks within them, and the names that these declare.
// Precondition: the document is read.
std::vector<OutlineItem> outline_of(const Document& document);

}  // namespace orvex::frontend
