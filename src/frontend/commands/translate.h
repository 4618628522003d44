// Putting the outputs of a file into place.
#pragma once

#include "frontend/commands/check.h"
#include "frontend/findings/finding.h"
#include "frontend/options.h"
#include "frontend/reading/source.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// The outputs of a file, and what they were made from, for the depfile and the summary.
struct Placed {
    std::vector<std::string> outputs;  // paths, generator then header file of each model
    std::size_t written = 0;           // of them new or changed; the others were not touched
    std::vector<Finding>
        findings;  // a model name that is no file name, an output that is an input, ...
};

// Puts the files of the models that came through into place. `inputs` are all files of the command line:
// none of them is ever written.
Placed place_outputs(const Source& source, const Checked& checked, const Options& options,
                     const std::vector<std::string>& inputs);

// The text of a depfile: all outputs left of the colon, all inputs right of it, names escaped as make
// reads them.
std::string depfile(const std::vector<std::string>& outputs,
                    const std::vector<std::string>& inputs);

// Gives `path` this text at once: a new file beside it takes its name. False, with errno set, where
// that cannot be done. `changed` says whether it had another text before; if not, it is not touched.
bool put_file(const std::string& path, std::string_view text, bool& changed);

}  // namespace orvex::frontend
