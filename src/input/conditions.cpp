#include "input/conditions.h"

#include "input/textops.h"
#include "notation/conditions.h"
#include "preproc.h"
#include "stop.h"

namespace orvex {

namespace {

// The field is written only where its value differs from zero.
void set_implicit_condition() {
    const View value = field.is_blank() ? View(" ") : field.view();
    condtn = value.front() == '(' ? joined<maxline>({"(ABS", value, " GT ORVEPS)"})
                                  : joined<maxline>({"(ABS(", value, ") GT ORVEPS)"});
}

}  // namespace

void rdcond() {
    const notation::ConditionCut cut = notation::find_condition(field);
    if (cut.fault != notation::Fault::none) pperror(" *** RDCOND: Closing parenthesis is missing.");
    root = field.slice(1, static_cast<int>(cut.expression_end));
    condtn.clear();
    if (cut.mark != View::npos) {
        chkcnd(static_cast<int>(cut.mark) + 1);
    } else if (notation::has_implicit_condition(label)) {
        set_implicit_condition();
    }
}

void chkcnd(int pos) {
    condtn = field.from(pos + 1);
    field.blank_from(pos);
    lftjst(condtn);
    const bool balanced = notation::is_balanced(condtn);
    if (notation::is_wrapped(condtn)) condtn = joined<maxline>({"(", condtn, ")"});
    if (!balanced) pperror(" *** CHKCND: Parethesis mismatch.");
}

}  // namespace orvex
