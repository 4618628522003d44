// The symbol table of a model: names with their type, dimension and references. It rejects a name
// used as two kinds or with two dimensions, and a variable that was not declared before the report
// section.
#pragma once

#include "text/text.h"

namespace orvex {

// Enters `root` under the type code with dimension narg, and each own argument as a set, or checks
// them against their entries. If `root` is blank or begins with "(", it is skipped, and so are the
// arguments.
// Stops: kind-mismatch, dimension-mismatch, report-name-undeclared.
// Stops (overflow): name-too-long, too-many-names.
void addsym(char typ);

// Records a reference to each known name of the current field: `root` and its own arguments.
void chkref();

// Returns only if the name is in the table with that type.
// Stops: constraint-name-unknown, constraint-kind-mismatch.
void chksym(View name, char typ);

}  // namespace orvex
