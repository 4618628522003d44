// Descriptions of names without the "!" before them: their words are declared as names.
#pragma once

#include "frontend/model/model.h"
#include "frontend/syntax/source.h"

#include <string_view>
#include <vector>

namespace orvex::frontend {

struct Description {
    Range name;   // the last one that is meant to be a name
    Range words;  // the first one after it to the end
    bool is_sure = false;
    bool has_error = false;  // in its line, for which it may be the cause
};

// Can the word be part of a description, though nobody uses it as a name: "of", "the"?
bool is_little_word(std::string_view word);

// In the order of the file; one for each line at most.
std::vector<Description> read_descriptions(const Source& source, const Model& model);

}  // namespace orvex::frontend
