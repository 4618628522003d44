// The keyword record of a constraint, as in $CONSTRAINT:TAU(S)$X0(S).
#pragma once

#include "notation/cut.h"

#include <cstddef>

namespace orvex::notation {

struct ConstraintCut {
    Cut variable;   // the auxiliary variable, without blanks around it
    Cut arguments;  // from its "(" on
    Cut condition;  // from its "$" on
};

// Cuts the text after the keyword and its colon, which end at `start`.
ConstraintCut cut_constraint(View record, std::size_t start);

}  // namespace orvex::notation
