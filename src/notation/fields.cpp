#include "notation/fields.h"

namespace orvex::notation {

EntryCut cut_entry(View record, std::size_t from) {
    const std::size_t columns = record_columns;
    EntryCut cut;
    cut.fault = Fault::freefd_end;
    const std::size_t start = record.find_first_not_of(blank_char, from);
    cut.entry = {start, record.size()};
    if (start >= columns - 1) return cut;
    int depth = 0;
    std::size_t end = start;
    for (; end < record.size(); ++end) {
        const char c = record[end];
        if (c == '(') {
            ++depth;
        } else if (c == ')') {
            --depth;
        } else if (c == blank_char && depth == 0) {
            break;
        }
    }
    if (depth != 0 || end >= columns) return cut;
    cut.entry.end = end;
    cut.fault = Fault::none;
    return cut;
}

}  // namespace orvex::notation
