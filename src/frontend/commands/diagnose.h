// From the translator's report of an error to a finding at its place in the user's file.
#pragma once

#include "frontend/findings/finding.h"
#include "frontend/syntax/source.h"

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

// The finding: severity error, code, place in the line, where the name was declared, and what to
// do.
Finding diagnose(const Source& source, const std::vector<bool>& left_out, const Fault& fault);

// The keyword that was meant by the first word of a keyword record, "$" left out: the nearest one,
// or one that begins alike, as with PRODUCTION or COMM; empty where there is none.
std::string meant_keyword(std::string_view word);

// Does the keyword, without its "$", stand outside of models: does it begin one, or the text around
// it, or is it the host's, as the one that takes in the outputs? Inside of a model it shows that
// the $OFFTEXT is missing.
bool stands_outside(std::string_view keyword);

}  // namespace orvex::frontend
