// An error of a model, and the contents of its finding.
#pragma once

#include "frontend/findings/finding.h"
#include "frontend/findings/pattern.h"
#include "frontend/model/model.h"
#include "frontend/syntax/source.h"

#include <optional>
#include <string>
#include <vector>

namespace orvex::frontend {

// An error of a model in a file.
struct ErrorCase {
    const Source& source;
    const Model& model;
    const Error& error;
    // The first record of host text that a model without an end runs into, or no_index.
    Index host_text = no_index;
    // Whether its name is compared with other names.
    bool is_compared = true;
};

// The contents of a finding, before its texts are put together.
struct Said {
    std::string variant;  // of the message and the help in docs/messages.md
    std::string help;     // the variant of the help, if it differs
    Values values;
    Range place;  // the smallest part of the text that is wrong
    std::vector<Remark> notes;
    std::string meant;  // the probable correct text, as it should be written; usually empty
    std::optional<Fix> fix;
};

}  // namespace orvex::frontend
