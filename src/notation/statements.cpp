#include "notation/statements.h"

namespace orvex::notation {

Statement implicit_condition(View value) {
    if (value.empty()) value = " ";
    return value.front() == '(' ? Statement({"(ABS", value, " GT ORVEPS)"})
                                : Statement({"(ABS(", value, ") GT ORVEPS)"});
}

}  // namespace orvex::notation
