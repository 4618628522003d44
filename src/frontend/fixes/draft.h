// A file while it is being fixed: fixes are applied, and the text is checked again.
#pragma once

#include "frontend/findings/finding.h"
#include "frontend/fixes/revision.h"
#include "frontend/syntax/source.h"

#include <cstddef>
#include <functional>
#include <vector>

namespace orvex::frontend {

struct Draft {
    Source source;                  // in its current state
    std::vector<Finding> findings;  // on it
    Revision revision;              // of the original text
    std::size_t fixed = 0;          // fixes applied
};

// Finds what is wrong with a file.
using Check = std::function<std::vector<Finding>(const Source&)>;

// A draft of a file with these findings and no changes yet. The source must outlive it.
Draft begin_draft(const Source& source, std::vector<Finding> findings);

// Applies edits that are in order and do not touch one another, and checks the text.
void revise(Draft& draft, const std::vector<Edit>& edits, const Check& check);

// Applies the fixes of findings that are at least as sure as `least`, in rounds, until there are no
// more or the maximum number of rounds is reached. Fixes that touch the same place need several
// rounds, and so do findings that only appear after another fix.
void make_fixes(Draft& draft, Confidence least, const Check& check);

}  // namespace orvex::frontend
