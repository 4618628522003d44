// Cutting the leftmost field or entry off a record. Records are as read (upper case, TABs as
// blanks, no comment) and without trailing blanks; the columns after their end are blank.
#pragma once

#include "notation/cut.h"
#include "notation/fault.h"
#include "notation/limits.h"

#include <cstddef>

namespace orvex::notation {

struct FieldCut {
    Fault fault = Fault::none;
    Cut label;            // with the blank that may separate it from its colon
    Cut value;            // without blanks before it
    std::size_t end = 0;  // the first position that does not belong to the field
};

// The first position of the label that ends before a colon.
inline std::size_t label_start(View record, std::size_t from, std::size_t colon) {
    const std::size_t longest = label_columns;
    if (colon == from) return colon;
    std::size_t start = colon - 1;
    while (start > from && colon - start < longest && record[start - 1] != blank_char) --start;
    return start;
}

// The end of a value, given the next field's colon: after the blank before the next label.
inline std::size_t value_end(View record, std::size_t colon, std::size_t next_colon) {
    for (std::size_t end = next_colon - 1; end > colon + 1; --end) {
        if (record[end - 1] == blank_char) return end;
    }
    return colon + 1;
}

// The leftmost labelled field at or after `from`; everything before `from` counts as blank. The
// label is the character before the first colon, whatever it is, together with the non-blank
// characters directly before that one (only the last 20 of them all). The value is the text from
// the colon to the blank before the next label. So there may be one blank between a label and its
// colon: the label of "O :X" is O. Neither quotes nor parentheses protect a colon. Faults:
// line-without-fields, label-missing.
inline FieldCut cut_field(View record, std::size_t from = 0) {
    FieldCut cut;
    if (from >= record.size()) {
        cut.fault = Fault::getfld_blank;
        return cut;
    }
    const std::size_t colon = record.find(':', from);
    if (colon == View::npos) {
        cut.fault = Fault::getfld_label;
        return cut;
    }
    const std::size_t next_colon = record.find(':', colon + 1);
    cut.end = next_colon == View::npos ? record.size() : value_end(record, colon, next_colon);
    cut.label = {label_start(record, from, colon), colon};
    cut.value = {colon + 1, cut.end};
    while (!cut.value.empty() && record[cut.value.begin] == blank_char) ++cut.value.begin;
    return cut;
}

struct EntryCut {
    Fault fault = Fault::none;
    Cut entry;  // with a fault, the rest of the record; its begin is npos if nothing is left
};

// The leftmost blank-separated entry at or after `from`; everything before `from` counts as blank.
// Parentheses protect blanks.
// Faults: declaration-unclosed, if no blank ends the entry, if it begins in the last column, or if
// there is no entry.
EntryCut cut_entry(View record, std::size_t from = 0);

}  // namespace orvex::notation
