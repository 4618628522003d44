// What may have been meant in place of what the translator stops at, and what to do.
#pragma once

#include "frontend/model/model.h"
#include "frontend/syntax/source.h"

#include <string>

namespace orvex::frontend {

// An error of a model of a file.
struct ErrorCase {
    const Source& source;
    const Model& model;
    const Error& error;
    // Whether its name is compared with others.
    bool is_compared = true;
};

// What may have been meant, as it is to be written; empty where nothing is near.
std::string meant(const ErrorCase& at);

// What to do where the place tells it better than the entry of the code; else empty.
std::string own_help(const ErrorCase& at);

// Does the error come from a keyword that belongs outside of models?
bool lacks_end(const ErrorCase& at);

}  // namespace orvex::frontend
