// Places of findings in the user's file.
#pragma once

#include "frontend/findings/finding.h"
#include "frontend/syntax/source.h"

#include <string>

namespace orvex::frontend {

// The whole file.
Span whole_file(std::string path);

// A part of one line of the file. An empty one is shown as a place between two characters.
Span span_of(const Source& source, Range range);

// The whole record of a line: from its first non-blank character to its last, without a comment
// after "!" unless there is nothing else.
Span record_span(const Source& source, int line);

// Sets the lines and columns of a fix's edits, and replaces LF in their texts by the line end of
// the file.
void place_fix(const Source& source, Fix& fix);

}  // namespace orvex::frontend
