#include "notation/conditions.h"

#include "notation/limits.h"

#include <algorithm>

namespace orvex::notation {

namespace {

// The position after the ")" that closes the "(" in column 1, or 0. The last column is not
// searched.
std::size_t closing_end(View value) {
    const std::size_t searched = std::min<std::size_t>(value.size(), record_columns - 1);
    int depth = 0;
    for (std::size_t at = 0; at < searched; ++at) {
        if (value[at] == '(') ++depth;
        if (value[at] == ')' && --depth == 0) return at + 1;
    }
    return 0;
}

}  // namespace

ConditionCut find_condition(View value) {
    ConditionCut cut;
    if (value.starts_with('(')) {
        cut.expression_end = closing_end(value);
        if (cut.expression_end == 0) cut.fault = Fault::rdcond_close;
    }
    if (cut.fault == Fault::none) cut.mark = value.find('$', cut.expression_end);
    return cut;
}

bool is_balanced(View condition) {
    const int outer = is_wrapped(condition) ? 1 : 0;
    int depth = outer;
    for (const char c : condition) {
        if (c == '(') ++depth;
        if (c == ')' && --depth < 0) return false;
    }
    return depth == outer;
}

}  // namespace orvex::notation
