#include "input/conditions.h"

#include "input/textops.h"
#include "preproc.h"
#include "stop.h"

namespace orvex {

namespace {

// Position of the ")" that closes the "(" in position 1 of `field`, or 0. The last position is not
// looked at.
int closing_parenthesis() {
    int depth = 1;
    for (int position = 2; position < maxline; ++position) {
        if (field[position] == '(') ++depth;
        if (field[position] == ')' && --depth == 0) return position;
    }
    return 0;
}

bool is_balanced(View text) {
    int depth = 0;
    for (const char c : text) {
        if (c == '(') ++depth;
        if (c == ')' && --depth < 0) return false;
    }
    return depth == 0;
}

// The field is written only where its value differs from zero.
void set_implicit_condition() {
    const View value = field.is_blank() ? View(" ") : field.view();
    condtn = value.front() == '(' ? joined<maxline>({"(ABS", value, " GT ORVEPS)"})
                                  : joined<maxline>({"(ABS(", value, ") GT ORVEPS)"});
}

}  // namespace

void rdcond() {
    root.clear();
    int search_start = 1;
    if (field[1] == '(') {
        const int close = closing_parenthesis();
        if (close == 0) pperror(" *** RDCOND: Closing parenthesis is missing.");
        root = field.slice(1, close);
        search_start = close + 1;
    }
    condtn.clear();
    const int mark = field.find('$', search_start);
    if (mark != 0) {
        chkcnd(mark);
    } else if (label == "T" || label == "S") {
        set_implicit_condition();
    }
}

void chkcnd(int pos) {
    condtn = field.from(pos + 1);
    field.blank_from(pos);
    lftjst(condtn);
    if (condtn[1] != '(') condtn = joined<maxline>({"(", condtn, ")"});
    if (!is_balanced(condtn)) pperror(" *** CHKCND: Parethesis mismatch.");
}

}  // namespace orvex
