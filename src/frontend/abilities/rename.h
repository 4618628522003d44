// Renaming a name of a model or of the host program.
#pragma once

#include "frontend/abilities/document.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

struct RenamedPlace {
    Range range;
    bool in_host_text = false;  // where a word may mean something else
};

struct Renaming {
    std::string refusal;               // why it cannot be renamed; empty if it can
    Range name;                        // at the offset
    std::vector<RenamedPlace> places;  // in text order; not those that have the new name already
};

// Can the name at an offset be renamed? Precondition: the document has been read.
Renaming prepare_rename(const Document& document, Offset offset);

// The places that must change. Afterwards the models of the file mean the same: a new name that
// would change their meaning is refused. Precondition: the document has been read.
Renaming rename_at(const Document& document, Offset offset, std::string_view new_name);

}  // namespace orvex::frontend
