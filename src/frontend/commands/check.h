// All errors and warnings of one file.
#pragma once

#include "frontend/cli/options.h"
#include "frontend/findings/finding.h"
#include "frontend/model/economy.h"
#include "frontend/syntax/source.h"
#include "frontend/translator/translator.h"

#include <cstddef>
#include <string>
#include <vector>

namespace orvex::frontend {

// A model that came through the first run, with which nothing was changed in the input: what
// translate puts into place.
struct Translated {
    std::size_t index = 0;  // in source.models
    ModelOutput output;
};

struct Checked {
    std::vector<Finding> findings;   // ordered by line
    bool more = false;               // the limit of errors was reached, and there are more
    std::vector<bool> left_out;      // for each model of the file: not asked for
    std::vector<Translated> models;  // translated without an error, in the order of the file
};

// Translates the file and looks for what is wrong with it: after an error the failing record is
// made a comment, and the file is translated again. Throws StartFailure where the translator cannot
// be run.
Checked check(const Source& source, const Options& options, const std::string& program,
              const Workplace& place);

}  // namespace orvex::frontend
