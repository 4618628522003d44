#include "input/fields.h"

#include "input/arguments.h"
#include "input/conditions.h"
#include "input/textops.h"
#include "stop.h"
#include "symbols/table.h"

#include <algorithm>

namespace orvex {

namespace {

// First position of the label that ends before the colon.
int label_start(const Line& rec, int colon) {
    constexpr int label_length = 20;
    int start = colon - 1;
    while (start >= 2 && start > colon - label_length && rec[start - 1] != blank_char) --start;
    return start;
}

// Last position of a value, given the next field's colon: the blank before the next label.
int value_end(const Line& rec, int colon, int next_colon) {
    int end = next_colon - 2;
    while (end > colon && rec[end] != blank_char) --end;
    return std::max(end, colon);
}

// Position of the blank that ends the entry starting at `start`, or 0.
int entry_end(int start) {
    int depth = 0;
    for (int position = start; position <= maxline; ++position) {
        const char c = record[position];
        if (c == '(') {
            ++depth;
        } else if (c == ')') {
            --depth;
        } else if (c == blank_char && depth == 0) {
            return position;
        }
    }
    return 0;
}

}  // namespace

LabelledField leftmost_field(const Line& rec) {
    if (rec.is_blank()) pperror(" *** GETFLD: Blank record.");
    const int colon = rec.find(':');
    if (colon == 0) pperror(" *** GETFLD: Unlabelled entry.");
    const int next_colon = rec.find(':', colon + 1);
    const int end = next_colon == 0 ? maxline : value_end(rec, colon, next_colon);
    View value = rec.slice(colon + 1, end);
    while (!value.empty() && value.front() == blank_char) value.remove_prefix(1);
    return {trimmed(rec.slice(label_start(rec, colon), colon - 1)), value, end};
}

void getfld(Line& rec, Text<20>& lab, Line& val) {
    const LabelledField found = leftmost_field(rec);
    lab = found.label;
    val = found.value;
    rec.blank(1, found.end);
}

void parse() {
    getfld(record, label, field);
    rdcond();
    extarg();
    rdarg();
    chkref();
}

void freefd() {
    const int start = firstnonblank(record);
    const int end = start == 0 || start >= maxline ? 0 : entry_end(start);
    if (end == 0) pperror(" *** FREEFD: unexpected EOL.");
    field = record.slice(start, end);
    record.blank(start, end);
}

}  // namespace orvex
