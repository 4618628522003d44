#include "notation/constraints.h"

#include <algorithm>

namespace orvex::notation {

ConstraintCut cut_constraint(View record) {
    ConstraintCut cut;
    const std::size_t colon = record.find(':');
    if (colon == View::npos) {
        cut.fault = Fault::conblk_colon;
        return cut;
    }
    const std::size_t mark = std::min(record.find('$', colon), record.size());
    const std::size_t open = std::min(record.find('(', colon), mark);
    cut.condition = {mark, record.size()};
    cut.arguments = without_blanks(record, {open, mark});
    cut.variable = without_blanks(record, {colon + 1, open});
    return cut;
}

}  // namespace orvex::notation
