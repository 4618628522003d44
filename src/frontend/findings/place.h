// Places of findings in the user's file.
#pragma once

#include "frontend/findings/finding.h"
#include "frontend/syntax/source.h"

#include <string>

namespace orvex::frontend {

// The file as a whole.
Span whole_file(std::string path);

// A part of one line of the file. An empty one is shown as a place between two characters.
Span span_of(const Source& source, Range range);

// The whole record of a line: from its first character that is not blank to its last, a comment
// after "!" left out unless it is all there is.
Span record_span(const Source& source, int line);

// Gives the edits of a fix their lines and columns, and the lines that they put in the line ends of
// the file where they have LF alone.
void place_fix(const Source& source, Fix& fix);

}  // namespace orvex::frontend
