// Descriptions of names without a "!" before them: their words are declared as names.
#pragma once

#include "frontend/model/model.h"
#include "frontend/syntax/source.h"

#include <string_view>
#include <vector>

namespace orvex::frontend {

struct Description {
    Range name;   // the last one that is meant as a name
    Range words;  // from the first word after it to the end
    bool is_sure = false;
    bool has_error = false;  // in its line; the description may be its cause
};

// Is the word likely in a description, but not plausible as a name: "of", "the"?
bool is_little_word(std::string_view word);

// In the order of the file, at most one per line.
std::vector<Description> read_descriptions(const Source& source, const Model& model);

}  // namespace orvex::frontend
