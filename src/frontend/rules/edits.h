// Edits that correct findings.
#pragma once

#include "frontend/findings/finding.h"
#include "frontend/rules/rule.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

Edit replacing(Range range, std::string text);
Edit inserting(Offset place, std::string text);
Edit removing(Range range);

void set_fix(Finding& finding, Confidence confidence, std::vector<Edit> edits);

// A text in capitals or, if all letters of `model` are lower-case, in lower case.
std::string cased_like(std::string_view model, std::string_view text);

// Breaks a line at that place: the blanks before it become a line end and the start of a line.
Edit breaking_line(std::string_view bytes, Offset place, std::string_view start);

// The line with its line end.
Range whole_line(const Tree& tree, Index record);

// Where a field begins: after the "+" and any blanks before it.
Offset field_begin(const Tree& tree, Index field);

// Removes a field from its record, with the blanks next to it, and its whole line if nothing else
// is on it. None for the first field of an entry or of an opening record, and for one that shares
// its line only with a description.
std::optional<Edit> removing_field(const Source& source, Index record, Index field);

}  // namespace orvex::frontend
