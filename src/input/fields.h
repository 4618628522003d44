// The field splitter: takes the leftmost field or entry off a record, blanking what it took.
#pragma once

#include "preproc.h"
#include "text/text.h"

namespace orvex {

// A field as a view of its record, which must outlive it.
struct LabelledField {
    View label;
    View value;
    // The last position that belongs to the field.
    int end;
};

// The leftmost labelled field of `rec`. The label is the character before the first colon, whatever
// it is, together with the non-blank characters directly before that one (only the last 20 of them
// all). The value is the text from the colon to the blank before the next label. So there may be
// one blank between a label and its colon: the label of "O :X" is O. Neither quotes nor parentheses
// protect a colon.
// Stops: line-without-fields, label-missing.
LabelledField leftmost_field(const Line& rec);

// Cuts the leftmost labelled field off `rec`, with any text before its label.
// Stops: those of leftmost_field.
void getfld(Line& rec, Text<20>& lab, Line& val);

// Cuts the leftmost field off `record` and analyses it: sets label, field, condtn, root, arg, narg
// and nxarg, and records references of known names.
// Stops: those of getfld, rdcond, extarg and rdarg.
void parse();

// Cuts the leftmost blank-separated entry off `record` into `field`; parentheses protect blanks.
// Stops: declaration-unclosed, if no blank ends the entry, if it begins in the last column, or if
// there is no entry.
void freefd();

}  // namespace orvex
