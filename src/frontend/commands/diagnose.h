// From the translator's report of an error to a finding at its place in the user's file.
#pragma once

#include "frontend/findings/finding.h"
#include "frontend/reading/source.h"
#include "frontend/reading/translator.h"

#include <string>
#include <vector>

namespace orvex::frontend {

// An error of a run: the message, and the line that the translator was at.
struct Fault {
    std::string message;
    int line = 0;           // of the failing record in the user's file
    std::string generator;  // of the model, as far as it was written
    std::string header;
    std::size_t model = 0;  // index in source.models
};

// The finding: severity error, code, place in the line, where the name was declared, and what to do.
Finding diagnose(const Source& source, const std::vector<bool>& left_out, const Fault& fault);

// The span of bytes [begin, end) of a line, both from 0.
Span span_of(const Source& source, int line, std::size_t begin, std::size_t end);

// The span of the whole record of a line: from its first character that is not blank to its last.
Span record_span(const Source& source, int line);

}  // namespace orvex::frontend
