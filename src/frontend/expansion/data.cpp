#include "frontend/expansion/data.h"

#include <algorithm>
#include <cstddef>

namespace orvex::frontend {

namespace {

// The elements after the name in "Y.AGR.NORTH"; an element may contain points.
bool split_place(const NameTable& elements, std::string_view text, std::vector<Index>& place,
                 std::size_t width) {
    if (width == 0) return text.empty();
    if (text.empty() || text.front() != '.') return false;
    for (std::size_t end = text.find('.', 1);; end = text.find('.', end + 1)) {
        end = std::min(end, text.size());
        const Index element = elements.find(text.substr(1, end - 1));
        if (element != no_index) {
            place.push_back(element);
            if (split_place(elements, text.substr(end), place, width - 1)) return true;
            place.pop_back();
        }
        if (end == text.size()) return false;
    }
}

}  // namespace

const DataSet* find_set(const Data& data, const std::string& name) {
    std::string target = name;
    // A chain of aliases has no more steps than there are aliases.
    for (std::size_t step = 0; step <= data.aliases.size(); ++step) {
        const auto alias = data.aliases.find(target);
        if (alias == data.aliases.end()) break;
        target = alias->second;
    }
    const auto found = data.sets.find(target);
    return found == data.sets.end() ? nullptr : &found->second;
}

double value_at(const DataValues& values, std::span<const Index> place) {
    if (!values.has_width || place.size() != values.places.width()) return 0;
    const Index number = values.places.find(place);
    return number == no_index ? 0 : values.values[number];
}

const double* find_level(const Data& data, std::string_view printed) {
    const std::size_t point = std::min(printed.find('.'), printed.size());
    const auto found = data.levels.find(std::string(printed.substr(0, point)));
    if (found == data.levels.end() || !found->second.has_width) return nullptr;
    const DataValues& levels = found->second;
    std::vector<Index> place;
    if (!split_place(*data.elements, printed.substr(point), place, levels.places.width()))
        return nullptr;
    const Index number = levels.places.find(place);
    return number == no_index ? nullptr : &levels.values[number];
}

}  // namespace orvex::frontend
