// Giving a name of the model, or of the host's program, another name.
#pragma once

#include "frontend/abilities/document.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

struct RenamedPlace {
    Range range;
    bool in_host_text = false;  // where a word may be something else
};

struct Renaming {
    std::string refusal;               // why it cannot be done; empty where it can
    Range name;                        // at the offset
    std::vector<RenamedPlace> places;  // in the order of the text, without those that are right
};

// Can what is named at an offset get another name? Precondition: the document is read.
Renaming prepare_rename(const Document& document, Offset offset);

// The places that must change for it. Afterwards the models of the file mean the same: a new name
// with which they would not is refused. Precondition: the document is read.
Renaming rename_at(const Document& document, Offset offset, std::string_view new_name);

}  // namespace orvex::frontend
