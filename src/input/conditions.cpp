#include "input/conditions.h"

#include "input/textops.h"
#include "notation/conditions.h"
#include "notation/statements.h"
#include "preproc.h"
#include "stop.h"

namespace orvex {

void rdcond() {
    const notation::ConditionCut cut = notation::find_condition(field);
    if (cut.fault != notation::Fault::none) pperror(" *** RDCOND: Closing parenthesis is missing.");
    root = field.slice(1, static_cast<int>(cut.expression_end));
    condtn.clear();
    if (cut.mark != View::npos) {
        chkcnd(static_cast<int>(cut.mark) + 1);
    } else if (notation::has_implicit_condition(label)) {
        condtn = notation::implicit_condition(field);
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
