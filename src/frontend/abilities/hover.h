// What an editor tells of the word under the pointer.
#pragma once

#include "frontend/abilities/document.h"

#include <optional>
#include <string>

namespace orvex::frontend {

struct Hover {
    Range range;
    std::string text;  // Markdown
};

// Of a name, a label or a keyword; nothing for another place. Precondition: the document is read.
std::optional<Hover> hover_at(const Document& document, Offset offset);

// Kind, sets, description and uses of a name, as Markdown.
std::string name_text(const Document& document, const Model& model, Index symbol);

}  // namespace orvex::frontend
