#include "notation/constraints.h"

#include <algorithm>

namespace orvex::notation {

ConstraintCut cut_constraint(View record, std::size_t start) {
    const std::size_t mark = std::min(record.find('$', start), record.size());
    const std::size_t open = std::min(record.find('(', start), mark);
    ConstraintCut cut;
    cut.condition = {mark, record.size()};
    cut.arguments = without_blanks(record, {open, mark});
    cut.variable = without_blanks(record, {start, open});
    return cut;
}

}  // namespace orvex::notation
