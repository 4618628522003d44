// What an editor shows about the word under the pointer.
#pragma once

#include "frontend/abilities/document.h"

#include <optional>
#include <string>

namespace orvex::frontend {

struct Hover {
    Range range;
    std::string text;  // Markdown
};

// About a name, a label or a keyword; nothing elsewhere. Precondition: the document has been read.
std::optional<Hover> hover_at(const Document& document, Offset offset);

// Kind, sets, description and uses of a name, as Markdown.
std::string name_text(const Document& document, const Model& model, Index symbol);

}  // namespace orvex::frontend
