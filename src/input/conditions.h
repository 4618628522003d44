// Conditions: what follows the "$" of a value, as in X(I)$(A(I) GT 0), and the implicit condition
// of the fields labelled "T" and "S".
#pragma once

namespace orvex {

// Sets `condtn` for the current `field` and `label`: the explicit condition, which is cut off
// `field`; otherwise, for the labels "T" and "S", that the value is not zero; otherwise blank. Sets
// `root` to the parenthesised expression at the start of the value, or blanks it.
// Stops: expression-unclosed, and that of chkcnd.
void rdcond();

// Moves the condition after the "$" at position `pos` of `field` into `condtn`, in parentheses.
// Stops: condition-unbalanced.
void chkcnd(int pos);

}  // namespace orvex
