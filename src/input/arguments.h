// Argument lists: the own arguments of a value such as X(I,J), and the "#" list of extra indices
// over which a field is repeated, as in X(I)#(J,K).
#pragma once

namespace orvex {

// Cuts the "#" list off `field` into arg maxarg + 1 and following, at most eight, and sets nxarg.
// Stops: index-parenthesis-missing, index-list-unclosed, index-too-many, index-after-list,
// index-quotes-invalid.
void extarg();

// Splits `field` into `root` and its own arguments arg 1 to narg, at most seven. A `root` that
// already has a parenthesised expression is left alone, without arguments.
// Stops: argument-list-unclosed, argument-too-many, argument-after-list, argument-eighth,
// argument-quotes-invalid.
void rdarg();

}  // namespace orvex
