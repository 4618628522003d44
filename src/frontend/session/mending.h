// check --fix, --add-allow and --diff: files are fixed, and their new texts are written or shown.
#pragma once

#include "frontend/cli/options.h"
#include "frontend/fixes/draft.h"
#include "frontend/session/session.h"

#include <cstddef>

namespace orvex::frontend {

// The totals over all files.
struct MendingTotals {
    std::size_t files = 0;    // changed files
    std::size_t fixed = 0;    // fixed findings
    std::size_t allowed = 0;  // findings that a new comment allows
    std::size_t unsafe = 0;   // findings left that only --unsafe-fixes would fix
    std::size_t refused = 0;  // files that would have had more errors
};

// Fills file.mended as the options ask. Writes nothing.
void mend_file(File& file, const Options& options, const Check& check);

// Writes the fixed text, or makes it or its diff the output of the file, and adds to the totals.
// Except with --diff, the findings left become the file's findings. A file that cannot be written
// keeps its text and its findings, and gets one more.
void place_mended(File& file, const Options& options, MendingTotals& totals);

}  // namespace orvex::frontend
