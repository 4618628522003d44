// Files that get a new text.
#pragma once

#include "frontend/session/session.h"

#include <string_view>

namespace orvex::frontend {

// Writes a new text of the file. False where it cannot be written: the file keeps its text and gets
// one more finding.
bool rewrite(File& file, std::string_view text);

}  // namespace orvex::frontend
