// Puts the outputs of a file into place.
#pragma once

#include "frontend/cli/options.h"
#include "frontend/findings/finding.h"
#include "frontend/findings/report.h"
#include "frontend/session/session.h"

#include <cstddef>
#include <string>
#include <vector>

namespace orvex::frontend {

// The number of models in a file that the options ask for.
std::size_t asked_models(const Options& options, const Source& source);

// The outputs of all files, for the depfile and the summary.
struct Placed {
    std::vector<std::string> outputs;  // paths: for each model, generator then header file
    OutputFiles files;                 // the same, and any file whose partner could not be written
    // Models without outputs, because of an error in, before or about them.
    std::size_t untranslated = 0;
};

// Puts the outputs of a file into place, and adds them to `placed`. Problems are added to the
// findings of the file: the path of an input, of another model or a reserved one, or a file that
// cannot be written. A model with a finding that counts as an error leaves nothing, nor do two with
// the same name.
void place_outputs(File& file, const Options& options, const Inputs& inputs, Placed& placed);

}  // namespace orvex::frontend
