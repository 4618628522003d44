// What an editor can show in addition to a text: omitted sets, how often a name is used, and links
// to the files that lines name.
#pragma once

#include "frontend/abilities/document.h"

#include <string>
#include <vector>

namespace orvex::frontend {

// A text shown at an offset.
struct Hint {
    Offset offset = 0;
    std::string text;
};

// The sets of names written without them, as declared: "(R)" after the name. Precondition of this
// and the next function: the document has been read.
std::vector<Hint> hints_in(const Document& document, Range range);

// How often a name is used in each role: "made by 2, used by 5".
std::string uses_text(const Model& model, const Symbol& symbol);

// A line of text shown above a declared name.
struct Lens {
    Range range;
    std::string text;
};

// The uses of each declared variable.
std::vector<Lens> lenses_of(const Document& document);

// The name of a file in an $INCLUDE line of the host's text.
struct FileLink {
    Range range;
    std::string name;  // as written, without quotes
};

std::vector<FileLink> links_of(const Document& document);

}  // namespace orvex::frontend
