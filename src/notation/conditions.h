// Conditions: what follows the "$" of a value, as in X(I)$(A(I) GT 0).
#pragma once

#include "notation/cut.h"
#include "notation/fault.h"
#include "notation/limits.h"

#include <algorithm>
#include <cstddef>

namespace orvex::notation {

constexpr char condition_mark = '$';  // in a field: a condition follows

struct ConditionCut {
    Fault fault = Fault::none;
    std::size_t expression_end =
        0;  // end of the parenthesised expression that begins the value, or 0
    std::size_t mark = View::npos;  // the "$" of the condition, or npos
};

// The position after the ")" that closes the "(" in column 1, or 0. The last column is not
// searched.
inline std::size_t closing_end(View value) {
    const std::size_t searched = std::min<std::size_t>(value.size(), record_columns - 1);
    int depth = 0;
    for (std::size_t at = 0; at < searched; ++at) {
        if (value[at] == '(') ++depth;
        if (value[at] == ')' && --depth == 0) return at + 1;
    }
    return 0;
}

// Where the condition of a value (no leading or trailing blanks) begins. A "$" in a parenthesised
// expression at the start of the value belongs to that expression.
// Faults: expression-unclosed.
inline ConditionCut find_condition(View value) {
    ConditionCut cut;
    if (value.starts_with('(')) {
        cut.expression_end = closing_end(value);
        if (cut.expression_end == 0) cut.fault = Fault::rdcond_close;
    }
    if (cut.fault == Fault::none) cut.mark = value.find(condition_mark, cut.expression_end);
    return cut;
}

// Is the condition (no leading blanks) put in parentheses?
constexpr bool is_wrapped(View condition) { return !condition.starts_with('('); }

// Do the parentheses of a condition balance, including those added? `condition` is the text after
// the "$", without leading blanks.
bool is_balanced(View condition);

// A field with one of these labels and no condition is written only where its value is not zero.
constexpr bool has_implicit_condition(View label) { return label == "T" || label == "S"; }

}  // namespace orvex::notation
