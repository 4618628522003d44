// The field splitter: takes the leftmost field or entry off a record, blanking what it took.
#pragma once

#include "preproc.h"
#include "text.h"

namespace orvex {

// Cuts the leftmost labelled field off `rec`: `lab` is the run of non-blank characters before the first
// colon (its last 20), `val` what follows up to the blank before the next label. Text before the label
// is dropped. Neither quotes nor parentheses protect a colon.
// Stops: " *** GETFLD: Blank record.", " *** GETFLD: Unlabelled entry."
void getfld(Line& rec, Text<20>& lab, Line& val);

// Cuts the leftmost field off `record` and analyses it: sets label, field, condtn, root, arg, narg and
// nxarg, and records references of known names.
// Stops: those of getfld, rdcond, extarg and rdarg.
void parse();

// Cuts the leftmost blank-separated entry off `record` into `field`; parentheses protect blanks.
// Stops: " *** FREEFD: unexpected EOL." when no blank ends the entry, it begins in the last column, or there
// is none.
void freefd();

}  // namespace orvex
