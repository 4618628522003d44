// The keyword record of a constraint, as in $CONSTRAINT:TAU(S)$X0(S).
#pragma once

#include "notation/cut.h"
#include "notation/fault.h"

namespace orvex::notation {

struct ConstraintCut {
    Fault fault = Fault::none;
    Cut variable;   // the auxiliary variable, without blanks around it
    Cut arguments;  // from its "(" on
    Cut condition;  // from its "$" on
};

// Faults: conblk-colon.
ConstraintCut cut_constraint(View record);

}  // namespace orvex::notation
