#include "notation/fields.h"

#include "notation/limits.h"

#include <algorithm>

namespace orvex::notation {

namespace {

std::size_t label_start(View record, std::size_t from, std::size_t colon) {
    const std::size_t longest = label_columns;
    if (colon == from) return colon;
    std::size_t start = colon - 1;
    while (start > from && colon - start < longest && record[start - 1] != blank_char) --start;
    return start;
}

// The end of a value, given the next field's colon: after the blank before the next label.
std::size_t value_end(View record, std::size_t colon, std::size_t next_colon) {
    for (std::size_t end = next_colon - 1; end > colon + 1; --end) {
        if (record[end - 1] == blank_char) return end;
    }
    return colon + 1;
}

}  // namespace

FieldCut cut_field(View record, std::size_t from) {
    FieldCut cut;
    if (from >= record.size()) {
        cut.fault = Fault::getfld_blank;
        return cut;
    }
    const std::size_t colon = record.find(':', from);
    if (colon == View::npos) {
        cut.fault = Fault::getfld_label;
        return cut;
    }
    const std::size_t next_colon = record.find(':', colon + 1);
    cut.end = next_colon == View::npos ? record.size() : value_end(record, colon, next_colon);
    cut.label = {label_start(record, from, colon), colon};
    cut.value = {colon + 1, cut.end};
    while (!cut.value.empty() && record[cut.value.begin] == blank_char) ++cut.value.begin;
    return cut;
}

EntryCut cut_entry(View record, std::size_t from) {
    const std::size_t columns = record_columns;
    EntryCut cut;
    cut.fault = Fault::freefd_end;
    const std::size_t start = record.find_first_not_of(blank_char, from);
    if (start >= columns - 1) return cut;
    cut.entry = {start, record.size()};
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
