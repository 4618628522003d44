// The data of a command line, for all its models.
#pragma once

#include "frontend/cli/options.h"
#include "frontend/cli/reporter.h"
#include "frontend/expansion/data.h"
#include "frontend/expansion/expand.h"
#include "frontend/findings/finding.h"
#include "frontend/session/session.h"

#include <functional>
#include <vector>

namespace orvex::frontend {

struct CommandData {
    DataFiles files;
    std::vector<Finding> findings;  // until the first file is shown
    bool is_whole = true;           // false if a file cannot be read or is malformed
};

// Reads the files of --data.
void read_command_data(const Options& options, CommandData& data);

// Calls `take` with each model of the file that has no error, unless data are missing. Puts
// findings about the data before those of the first file.
void take_models(File& file, CommandData& data,
                 const std::function<void(const GeneratedModel& generated)>& take);

// Shows the names in the data that no model uses. With --model they may be for another model, so
// nothing is shown.
void show_unused_names(const CommandData& data, const Options& options, Reporter& reporter);

}  // namespace orvex::frontend
