// check --fix, --add-allow and --diff: files are mended, and their new texts put into place or
// shown.
#pragma once

#include "frontend/cli/options.h"
#include "frontend/fixes/draft.h"
#include "frontend/session/session.h"

#include <cstddef>

namespace orvex::frontend {

// What came of all files.
struct MendingTotals {
    std::size_t files = 0;    // that are changed
    std::size_t fixed = 0;    // findings
    std::size_t allowed = 0;  // findings that a new comment allows
    std::size_t unsafe = 0;   // findings left that only --unsafe-fixes would fix
    std::size_t refused = 0;  // files that would have had more errors
};

// Fills file.mended with what the options ask for. Nothing is written.
void mend_file(File& file, const Options& options, const Check& check);

// Writes the mended text, or makes it or its diff the output of the file, and adds to the totals.
// The file's findings become those that are left, but for --diff. A file that cannot be written
// keeps its text and its findings, and gets one more.
void place_mended(File& file, const Options& options, MendingTotals& totals);

}  // namespace orvex::frontend
