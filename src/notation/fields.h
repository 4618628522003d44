// Cutting the leftmost field or entry off a record. Records are as they are read (upper case, TABs
// as blanks, no comment) and without trailing blanks; the columns after their end are blank.
#pragma once

#include "notation/cut.h"
#include "notation/fault.h"

#include <cstddef>

namespace orvex::notation {

struct FieldCut {
    Fault fault = Fault::none;
    Cut label;            // with the blank that may part it from its colon
    Cut value;            // without blanks before it
    std::size_t end = 0;  // the first position that does not belong to the field
};

// The leftmost labelled field at or after `from`, before which everything counts as blank. The
// label is the character before the first colon, whatever it is, with the run of non-blank
// characters before that one (the last 20 in all); the value is what follows, up to the blank
// before the next label. So one blank may part a label from its colon: the label of "O :X" is O.
// Neither quotes nor parentheses protect a colon. Faults: getfld-blank, getfld-label.
FieldCut cut_field(View record, std::size_t from = 0);

struct EntryCut {
    Fault fault = Fault::none;
    Cut entry;
};

// The leftmost blank-separated entry at or after `from`, before which everything counts as blank;
// parentheses protect blanks.
// Faults: freefd-end, when no blank ends the entry, when it begins in the last column or there is
// none.
EntryCut cut_entry(View record, std::size_t from = 0);

}  // namespace orvex::notation
