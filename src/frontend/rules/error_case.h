// An error of a model, and what its finding says.
#pragma once

#include "frontend/findings/finding.h"
#include "frontend/findings/pattern.h"
#include "frontend/model/model.h"
#include "frontend/syntax/source.h"

#include <optional>
#include <string>
#include <vector>

namespace orvex::frontend {

// An error of a model of a file.
struct ErrorCase {
    const Source& source;
    const Model& model;
    const Error& error;
    // The first record of host text that a model without an end runs into, or no_index.
    Index host_text = no_index;
    // Whether its name is compared with others.
    bool is_compared = true;
};

// What a finding says, before its texts are put together.
struct Said {
    std::string variant;  // of the message and the help in docs/messages.md
    std::string help;     // the variant of the help, where it is another one
    Values values;
    Range place;  // the smallest part of the text that is wrong
    std::vector<Remark> notes;
    std::string meant;  // what may have been meant, as it is to be written; mostly empty
    std::optional<Fix> fix;
};

}  // namespace orvex::frontend
