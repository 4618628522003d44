// What may be written at a place of a text.
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
    std::string text;     // what is put in
    std::string snippet;  // the same with places to fill, "$1"; empty where there are none
    std::string detail;   // one line
    int rank = 0;         // what is likelier comes first
};

struct Completion {
    Range replaced;  // what the author has written of it, up to the offset
    std::vector<CompletionItem> items;
};

// Precondition: the document is read.
Completion complete_at(const Document& document, Offset offset);

// What there is to say of an item of that kind at a place: of a name, label or keyword, as
// Markdown.
std::string item_text(const Document& document, Offset offset, const std::string& label,
                      ItemKind kind);

}  // namespace orvex::frontend
