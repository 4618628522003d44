// What must hold of the layout of any text.
#pragma once

#include <string>

namespace layout_properties {

// The text with its models laid out. Precondition: they have no errors.
std::string laid_out(const std::string& text);

// Lays out the models of a text, of which those with errors become comments first, and what has
// other blanks, as the number says. What does not hold then; empty where all does.
std::string broken(const std::string& text, unsigned blanks);

}  // namespace layout_properties
