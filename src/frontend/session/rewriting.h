// Files that get a new text.
#pragma once

#include "frontend/cli/options.h"
#include "frontend/cli/reporter.h"
#include "frontend/session/session.h"

#include <cstddef>
#include <string_view>

namespace orvex::frontend {

// Writes a new text to the file. False if it cannot be written: the file keeps its text and gets
// one more finding.
bool rewrite(File& file, std::string_view text);

// With --diff, the status is 1 if files would change.
void set_diff_status(const Options& options, std::size_t files, Reporter& reporter);

}  // namespace orvex::frontend
