// Putting the outputs of a file into place.
#pragma once

#include "frontend/base/files.h"
#include "frontend/cli/options.h"
#include "frontend/commands/check.h"
#include "frontend/findings/finding.h"
#include "frontend/syntax/source.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace orvex::frontend {

// The outputs of all files, for the depfile and the summary.
struct Placed {
    std::vector<std::string> outputs;  // paths, generator then header file of each model
    std::size_t written = 0;           // of them new or changed; the others were not touched
    std::size_t behind = 0;  // models that were not translated, as an error stands before them
    std::map<std::string, Span> taken;  // the same paths without detours, and the models' places
    std::set<std::string> reserved;     // paths without detours that the command writes otherwise
};

// A path as it is compared: without "." and "..".
std::string without_detours(const std::string& path);

// Puts the files of the models that came through into place, and adds them to `placed`. What cannot
// be is added to the findings of the file: a path of `inputs`, of another model or reserved, a file
// that cannot be written. A model with a finding that counts as an error leaves nothing.
void place_outputs(const Source& source, Checked& checked, const Options& options,
                   const FileSet& inputs, Placed& placed);

// The text of a depfile: all outputs left of the colon, all inputs right of it, names escaped as
// make reads them.
std::string depfile(const std::vector<std::string>& outputs,
                    const std::vector<std::string>& inputs);

}  // namespace orvex::frontend
