#include "input/fields.h"

#include "input/arguments.h"
#include "input/conditions.h"
#include "input/textops.h"
#include "stop.h"
#include "symbols/table.h"

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
int value_end(const Line& rec, int next_colon) {
    int end = next_colon - 2;
    while (end > 1 && rec[end] != blank_char) --end;
    return end;
}

void left_justify(Line& text) { text = text.from(std::max(firstnonblank(text), 1)); }

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

void getfld(Line& rec, Text<20>& lab, Line& val) {
    if (rec.is_blank()) pperror(" *** GETFLD: Blank record.");
    const int colon = rec.find(':');
    if (colon == 0) pperror(" *** GETFLD: Unlabelled entry.");
    lab = rec.slice(label_start(rec, colon), colon - 1);
    rec.blank(1, colon);

    const int next_colon = rec.find(':');
    const int end = next_colon == 0 ? maxline : value_end(rec, next_colon);
    val = rec.slice(colon + 1, end);
    rec.blank(1, end);
    left_justify(val);
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
