// Where in a model an offset is: its record, block and row, and the sets they loop over.
#pragma once

#include "frontend/abilities/document.h"
#include "notation/keywords.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

struct Context {
    Index record = 0;
    std::string_view before;                     // the text of the line up to the offset
    const Model* model = nullptr;                // null outside models
    const notation::Keyword* keyword = nullptr;  // of the block, as it was meant; or null
    const Block* block = nullptr;                // as in the model; or null
    const Entry* entry = nullptr;                // of the row that the record begins or continues
};

// Precondition: the document has been read.
Context context_at(const Document& document, Offset offset);

// The sets over which the block and the row loop, in capitals.
std::vector<std::string> loops_at(const Document& document, const Context& context);

// The label before a place in a record, in capitals; empty if there is none.
std::string label_before(const Document& document, Index record, Offset offset);

// The name whose argument list contains an offset: where it is, and how many arguments precede the
// offset.
struct OpenList {
    Range name;
    int argument = 0;
};

// The innermost argument list open at the offset; its name is empty if there is none.
OpenList open_list_at(const Document& document, const Context& context, Offset offset);

}  // namespace orvex::frontend
