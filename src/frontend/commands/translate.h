// Putting the outputs of a file into place.
#pragma once

#include "frontend/commands/check.h"
#include "frontend/findings/finding.h"
#include "frontend/options.h"
#include "frontend/reading/source.h"

#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvex::frontend {

// The files that are there already, whatever their paths: device and inode of each.
using FileSet = std::set<std::pair<unsigned long long, unsigned long long>>;

// Adds the file at `path`; nothing where there is none.
void add_file(FileSet& files, const std::string& path);
bool has_file(const FileSet& files, const std::string& path);

// The outputs of all files, for the depfile and the summary.
struct Placed {
    std::vector<std::string> outputs;  // paths, generator then header file of each model
    std::size_t written = 0;           // of them new or changed; the others were not touched
    std::set<std::string> taken;       // the same paths without detours, to find one that is taken
};

// Puts the files of the models that came through into place, and adds them to `placed`. What cannot be
// is added to the findings of the file: a path of `inputs` or of another model, a file that cannot be
// written. A model with a finding that counts as an error leaves nothing.
void place_outputs(const Source& source, Checked& checked, const Options& options,
                   const FileSet& inputs, Placed& placed);

// The text of a depfile: all outputs left of the colon, all inputs right of it, names escaped as make
// reads them.
std::string depfile(const std::vector<std::string>& outputs,
                    const std::vector<std::string>& inputs);

// Gives `path` this text at once: a new file beside it takes its name. A link is followed; what is no
// regular file, such as a device, is written in place. False, with errno set, where that cannot be done.
// `changed` says whether it had another text before; if not, it is not touched.
bool put_file(const std::string& path, std::string_view text, bool& changed);

}  // namespace orvex::frontend
