// All errors and warnings of one file.
#pragma once

#include "frontend/cli/options.h"
#include "frontend/findings/finding.h"
#include "frontend/model/model.h"
#include "frontend/syntax/source.h"
#include "frontend/translator/judge.h"

#include <atomic>
#include <string>
#include <vector>

namespace orvex::frontend {

struct Checked {
    std::vector<Finding> findings;          // ordered by line
    std::vector<Model> models;              // of the selected models, if wanted
    std::vector<Translated> outputs;        // of models without an error, in the order of the file
    std::vector<Translated> later_outputs;  // of models without an error, after a model with one
};

// What is wanted for a file besides its findings.
struct Wanted {
    bool models = false;
    bool outputs = false;
    // Ends the translator's run once it is true; null if nothing does.
    const std::atomic<bool>* stop = nullptr;
};

// What the text alone shows, without the translator. `built` are all its models, built in order.
std::vector<Finding> find_in_text(const Source& source, const std::vector<Model>& built,
                                  const Options& options);

// The same, with the models that it builds.
Checked check_text(const Source& source, const Options& options);

// Finds what is wrong with the file and lets the translator judge it. Throws StartFailure if the
// translator cannot be run, FolderFailure if it has no room.
Checked check_file(const Source& source, const Options& options, Wanted wanted,
                   const std::string& program, const TempDir& place);

}  // namespace orvex::frontend
