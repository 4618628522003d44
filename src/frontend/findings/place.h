// Places of findings in the user's file.
#pragma once

#include "frontend/findings/finding.h"
#include "frontend/syntax/source.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace orvex::frontend {

// The file as a whole.
Span whole_file(std::string path);

// The bytes [begin, end) of a line, both from 0; the file as a whole for line 0.
Span span_of(const Source& source, int line, std::size_t begin, std::size_t end);

// The whole record of a line: from its first character that is not blank to its last, a comment
// after "!" left out unless it is all there is.
Span record_span(const Source& source, int line);

// A name in a line, or the record where the name is not there; the file as a whole for line 0.
Span name_span(const Source& source, int line, std::string_view name);

// Position, from 0, of "LABEL:" in the line at or after `from`, or npos.
std::size_t find_label(std::string_view line, std::string_view label, std::size_t from = 0);

// A label with its colon, where it stands first or last in the line, or the record where it is not
// there.
Span label_span(const Source& source, int line, std::string_view label);
Span last_label_span(const Source& source, int line, std::string_view label);

}  // namespace orvex::frontend
