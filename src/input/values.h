// Field value translation: one field becomes one PUT statement of the generator file, and its names
// enter the symbol table.
#pragma once

#include "notation/statements.h"
#include "text/text.h"

namespace orvex {

using notation::Put;

// Writes the current field (root, arg, condtn) as a symbol with the head `text` (a label, a keyword
// that begins with "$", or blank for the bare name), and registers it under the type that the head
// implies.
// Stops: name-field-too-long, and those of addsym.
void chrfld(View text, Put mode);

// Writes the current field (label, field, condtn) as a value, and registers its name as a parameter
// unless it is a number.
// Stops: value-field-too-long, and those of addsym.
void numfld();

}  // namespace orvex
