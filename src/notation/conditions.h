// Conditions: what follows the "$" of a value, as in X(I)$(A(I) GT 0).
#pragma once

#include "notation/cut.h"
#include "notation/fault.h"

#include <cstddef>

namespace orvex::notation {

struct ConditionCut {
    Fault fault = Fault::none;
    std::size_t expression_end =
        0;  // end of the parenthesised expression that begins the value, or 0
    std::size_t mark = View::npos;  // the "$" of the condition, or npos
};

// Where the condition of a value without leading and trailing blanks begins. A "$" in a
// parenthesised expression that begins the value is a part of that expression.
// Faults: rdcond-close.
ConditionCut find_condition(View value);

// Does a condition without leading blanks get parentheses around it?
constexpr bool is_wrapped(View condition) { return !condition.starts_with('('); }

// Do the parentheses of a condition balance, with those that it gets? `condition` is what follows
// the "$", without leading blanks.
bool is_balanced(View condition);

// A field with one of these labels and no condition is written only where its value is not zero.
constexpr bool has_implicit_condition(View label) { return label == "T" || label == "S"; }

}  // namespace orvex::notation
