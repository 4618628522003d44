// Argument lists: the own arguments of a value such as X(I,J), and the "#" list of further indices
// over which a field is repeated, as in X(I)#(J,K).
#pragma once

namespace orvex {

// Cuts the "#" list off `field` into arg maxarg + 1 and following, at most eight, and sets nxarg.
// Stops: " *** EXTARG: Left paren. following # is missing.",
// " *** EXTARG: Right paren. following # is missing.", " *** EXTARG: Too many arguments.",
// " *** EXTARG: Closing delimiter missing.", " *** EXTARG: Invalid argument."
void extarg();

// Splits `field` into `root` and its own arguments arg 1 to narg, at most seven. A `root` that
// already holds a parenthesised expression is left alone, without arguments. Stops: " *** RDARG:
// Parethesis mismatch.", " *** RDARG: Too many arguments.", " *** RDARG: Closing delimiter
// missing.", " *** RDARG: More than 7 arguments detected.", " *** RDARG: Invalid argument."
void rdarg();

}  // namespace orvex
