#include "frontend/views/places.h"

#include "frontend/base/bytes.h"

#include <cstddef>

namespace orvex::frontend {

NamePlace PlaceFinder::find(Index record, Range range) {
    if (record != record_) go_to_line(record);
    const int column = column_at(range.begin);
    return {line_of_record(record), column, column_at(range.end), range};
}

void PlaceFinder::go_to_line(Index record) {
    record_ = record;
    line_ = line_range(source_.tree, record);
    is_utf8_ = is_utf8(text_of(source_.bytes, line_));
    at_ = line_.begin;
    column_ = 1;
}

int PlaceFinder::column_at(Offset offset) {
    if (offset < at_) {
        at_ = line_.begin;
        column_ = 1;
    }
    while (at_ < line_.end) {
        const std::size_t length =
            is_utf8_ ? decode(text_of(source_.bytes, {at_, line_.end})).length : 1;
        const Offset next = at_ + static_cast<Offset>(length);
        if (next > offset) break;
        at_ = next;
        ++column_;
    }
    return column_;
}

std::vector<NamePlace> places_of_uses(const Source& source, const Model& model) {
    std::vector<NamePlace> places;
    places.reserve(model.uses.size());
    PlaceFinder finder(source);
    for (const Use& use : model.uses) places.push_back(finder.find(use.record, use.range));
    return places;
}

std::vector<Index> uses_of(const Model& model, const Symbol& symbol) {
    std::vector<Index> uses;
    for (Index number = symbol.first_use; number != no_index; number = model.uses[number].next) {
        // The uses in one field need not be noted in order.
        auto after = uses.end();
        while (after != uses.begin() &&
               model.uses[*(after - 1)].range.begin > model.uses[number].range.begin) {
            --after;
        }
        uses.insert(after, number);
    }
    return uses;
}

}  // namespace orvex::frontend
