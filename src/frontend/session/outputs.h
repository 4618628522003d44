// Putting the outputs of a file into place.
#pragma once

#include "frontend/cli/options.h"
#include "frontend/findings/finding.h"
#include "frontend/findings/report.h"
#include "frontend/session/session.h"

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace orvex::frontend {

// The outputs of all files, for the depfile and the summary.
struct Placed {
    std::vector<std::string> outputs;  // paths, generator then header file of each model
    OutputFiles files;                 // the same, and one whose partner could not be written
    // Models without outputs, as there is an error in or before them.
    std::size_t untranslated = 0;
    std::map<std::string, Span> taken;  // the same paths without detours, and the models' places
};

// Puts the outputs of a file into place, and adds them to `placed`. What cannot be is added to the
// findings of the file: a path of an input, of another model or reserved, a file that cannot be
// written. A model with a finding that counts as an error leaves nothing.
void place_outputs(File& file, const Options& options, const Inputs& inputs, Placed& placed);

}  // namespace orvex::frontend
