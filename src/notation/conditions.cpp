#include "notation/conditions.h"

namespace orvex::notation {

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
