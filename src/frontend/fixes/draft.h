// A file in the course of being mended: fixes are made, and the text is checked again.
#pragma once

#include "frontend/findings/finding.h"
#include "frontend/fixes/revision.h"
#include "frontend/syntax/source.h"

#include <cstddef>
#include <functional>
#include <vector>

namespace orvex::frontend {

struct Draft {
    Source source;                  // as it is now
    std::vector<Finding> findings;  // on it
    Revision revision;              // of the text at first
    std::size_t fixed = 0;          // fixes that were made
};

// Finds what is wrong with a file.
using Check = std::function<std::vector<Finding>(const Source&)>;

// A draft of a file with these findings, in which nothing is changed yet. The source must outlive
// it.
Draft begin_draft(const Source& source, std::vector<Finding> findings);

// Makes edits that are in order and apart from one another, and checks the text.
void revise(Draft& draft, const std::vector<Edit>& edits, const Check& check);

// Makes the fixes of findings that are at least as sure as `least`, round after round until there
// is no more to make, or the rounds are up: fixes that touch the same place need several, and so
// does what only another fix brings to light.
void make_fixes(Draft& draft, Confidence least, const Check& check);

}  // namespace orvex::frontend
