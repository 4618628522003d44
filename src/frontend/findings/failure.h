// Findings that the translator has no message for.
#pragma once

#include "frontend/findings/finding.h"
#include "frontend/findings/pattern.h"

#include <string>
#include <string_view>

namespace orvex::frontend {

// An error or a warning, with the message and help that the index has for its code, or for a
// variant of it. The values fill the placeholders.
Finding failure(std::string code, const Values& values, Span span, std::string_view variant = {});
Finding warning(std::string code, const Values& values, Span span, std::string_view variant = {});

// Does an error with that code mean that the work could not be done, rather than that a model is
// wrong?
bool is_failure(std::string_view code);

// Replaces the help of the finding, which has at most one line.
void set_help(Finding& finding, std::string text);

// A finding about a file that could not be written; the errno says why.
Finding write_failure(const std::string& path, int error, Span span);

}  // namespace orvex::frontend
