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
    // The kind of the name, or of the names that a block is about; nothing for a model, and for a
    // block of declarations or reports.
    std::optional<Kind> kind;
    bool is_model = false;
    Range range;      // of the whole item
    Range selection;  // of its name, within `range`
    std::vector<OutlineItem> items;
};

// The models in the order of the text, their blocks within them, and the names that these declare.
// Precondition: the document has been read.
std::vector<OutlineItem> outline_of(const Document& document);

}  // namespace orvex::frontend
