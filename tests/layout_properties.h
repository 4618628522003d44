// Properties that must hold for the layout of any text.
#pragma once

#include <string>

namespace layout_properties {

// The text with its models laid out. Precondition: they have no errors.
std::string laid_out(const std::string& text);

// Lays out the models of a text (those with errors first become comments), and the same text with
// other blanks, chosen by the number. Returns the property that does not hold; empty if all do.
std::string broken(const std::string& text, unsigned blanks);

}  // namespace layout_properties
