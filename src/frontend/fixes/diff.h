// Edits as a text for `patch`.
#pragma once

#include "frontend/findings/finding.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// The unified diff of a text with edits that are in order and do not touch one another; empty if
// there are none.
std::string unified_diff(const std::string& path, std::string_view text,
                         const std::vector<Edit>& edits);

}  // namespace orvex::frontend
