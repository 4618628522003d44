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

// A text in capitals or, where all letters of `model` are small, in small letters.
std::string cased_like(std::string_view model, std::string_view text);

// Breaks a line before that place: blanks before it become a line end and the start of a line.
Edit breaking_line(std::string_view bytes, Offset place, std::string_view start);

// The line with its end.
Range whole_line(const Tree& tree, Index record);

// Where a field begins: without the "+" and blanks before it.
Offset field_begin(const Tree& tree, Index field);

// Takes a field out of its record, with blanks beside it, and its line where nothing else is in it.
// None for the first field of an entry, and where text without a meaning of its own is there.
std::optional<Edit> removing_field(const Source& source, Index record, Index field);

}  // namespace orvex::frontend
