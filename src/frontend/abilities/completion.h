// What may be written at a given place in a text.
#pragma once

#include "frontend/abilities/document.h"

#include <string>
#include <vector>

namespace orvex::frontend {

enum class ItemKind {
    keyword,
    label,
    nest,
    sector,
    commodity,
    consumer,
    auxiliary,
    parameter,
    set
};

struct CompletionItem {
    std::string label;
    ItemKind kind = ItemKind::label;
    std::string text;     // the text inserted
    std::string snippet;  // the same with places to fill in, "$1"; empty if there are none
    std::string detail;   // one line
    int rank = 0;         // likelier items have lower ranks
};

struct Completion {
    Range replaced;  // what the author has typed of it, up to the offset
    std::vector<CompletionItem> items;
};

// Precondition: the document has been read.
Completion complete_at(const Document& document, Offset offset);

// Markdown about an item of that kind (a name, label or keyword) at an offset.
std::string item_text(const Document& document, Offset offset, const std::string& label,
                      ItemKind kind);

}  // namespace orvex::frontend
