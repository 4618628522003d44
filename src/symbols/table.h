// The symbol table of a model: names with their type, dimension and references. It rejects a name used
// as two kinds or with two dimensions, and a variable that was not declared before the report section.
#pragma once

#include "text.h"

namespace orvex {

// Enters `root` under the type code with dimension narg, and each own argument as a set, or checks them
// against their entries. A `root` that is blank or begins with "(" is passed over, arguments included.
// Stops: " *** ADDSYM: symbol type mismatch: ", " *** ADDSYM: symbol dimension error:",
// " *** ADDSYM: Undeclared variable : ", and those of checksymlen and incrnsym.
void addsym(char typ);

// Raises symlenmx to the length of the name.
// Stops (overflow): " *** ADDSYM: symbol name length exceeds max of 65: "
void checksymlen(View name);

// Claims the next entry.
// Stops (overflow): " *** ADDSYM: symbol table overflows internal length of 1000"
void incrnsym();

// Records a reference of entry `isym` on the current line, as long as there is room.
void addref(int isym);

// Records a reference of each known name of the current field: `root` and its own arguments.
void chkref();

// Returns only when the name is in the table with that type.
// Stops: " *** Symbol type mismatch: ", " *** Unrecognized symbol: "
void chksym(View name, char typ);

}  // namespace orvex
