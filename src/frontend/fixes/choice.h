// Chooses the fixes of findings that can be made at the same time.
#pragma once

#include "frontend/findings/finding.h"

#include <cstddef>
#include <vector>

namespace orvex::frontend {

struct Choice {
    std::vector<Edit> edits;  // of all chosen fixes, in order and not touching one another
    std::size_t fixes = 0;
};

// Chooses, in the order of the findings, the fixes that are at least as sure as `least`, except
// those that touch the place of an earlier one. A fix with placeholders is never chosen.
Choice choose_fixes(const std::vector<Finding>& findings, Confidence least);

}  // namespace orvex::frontend
