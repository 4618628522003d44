// Findings that no message of the translator stands for.
#pragma once

#include "frontend/findings/finding.h"

#include <string>

namespace orvex::frontend {

// An error or a warning, with the help that the index of messages has for its code.
Finding failure(std::string code, std::string message, Span span);
Finding warning(std::string code, std::string message, Span span);

}  // namespace orvex::frontend
