// Findings that the translator has no message for.
#pragma once

#include "frontend/findings/finding.h"
#include "frontend/findings/pattern.h"

#include <string>
#include <string_view>

namespace orvex::frontend {

// An error or a warning, with the message and the help that the index has for its code, or for a
// variant of it, and these values in their places.
Finding failure(std::string code, const Values& values, Span span, std::string_view variant = {});
Finding warning(std::string code, const Values& values, Span span, std::string_view variant = {});

// Does an error of that code say that the work could not be done, and not that a model is wrong?
bool is_failure(std::string_view code);

// Replaces what the finding advises: it has at most one line of help.
void set_help(Finding& finding, std::string text);

// A file that could not be written, with the errno that says why.
Finding write_failure(const std::string& path, int error, Span span);

}  // namespace orvex::frontend
