// From the translator's report of an error to a finding at its place in the user's file.
#pragma once

#include "frontend/findings/finding.h"
#include "frontend/reading/source.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// An error of a run.
struct Fault {
    std::string message;    // as the translator wrote it
    std::size_t model = 0;  // index in source.models
    int line = 0;           // of the failing record in the user's file
    std::string generator;  // the files of the model, as far as they were written
    std::string header;
};

// The finding: severity error, code, place in the line, where the name was declared, and what to do.
Finding diagnose(const Source& source, const std::vector<bool>& left_out, const Fault& fault);

// The keyword that was meant by the first word of a keyword record, "$" left out; empty where none is
// near.
std::string meant_keyword(std::string_view word);

// The first word of a text: up to a blank or a colon.
std::string_view first_word(std::string_view text);

// How many lines the translator has counted when it comes to that model.
int lines_before(const Source& source, std::size_t model, const std::vector<bool>& left_out);

// The span of the bytes [begin, end) of a line, both from 0; of the file as a whole for line 0.
Span span_of(const Source& source, int line, std::size_t begin, std::size_t end);

// The span of the whole record of a line: from its first character that is not blank to its last, a
// comment behind "!" left out.
Span record_span(const Source& source, int line);

// The span of a name in a line, or that of the record where the name is not there.
Span name_span(const Source& source, int line, std::string_view name);

}  // namespace orvex::frontend
