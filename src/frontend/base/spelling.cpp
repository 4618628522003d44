#include "frontend/base/spelling.h"

#include "frontend/base/bytes.h"

#include <algorithm>
#include <cstddef>

namespace orvex::frontend {

namespace {

// The number of letters inserted, left out, replaced or swapped with their neighbour between two
// words.
std::size_t distance(std::string_view from, std::string_view to) {
    std::vector<std::size_t> before;  // the row before the last one
    std::vector<std::size_t> last(to.size() + 1);
    std::vector<std::size_t> row(to.size() + 1);
    for (std::size_t j = 0; j <= to.size(); ++j) last[j] = j;
    for (std::size_t i = 1; i <= from.size(); ++i) {
        row[0] = i;
        for (std::size_t j = 1; j <= to.size(); ++j) {
            const bool same = lower(from[i - 1]) == lower(to[j - 1]);
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (same ? 0 : 1)});
            const bool swapped = i > 1 && j > 1 && lower(from[i - 1]) == lower(to[j - 2]) &&
                                 lower(from[i - 2]) == lower(to[j - 1]);
            if (swapped) row[j] = std::min(row[j], before[j - 2] + 1);
        }
        before = last;
        last = row;
    }
    return last.back();
}

bool is_same(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char left, char right) { return lower(left) == lower(right); });
}

}  // namespace

std::string nearest(std::string_view word, const std::vector<std::string>& candidates) {
    const std::size_t limit = std::max<std::size_t>(word.size() / 3, 1);
    const std::string* best = nullptr;
    std::size_t least = limit + 1;
    bool is_tied = false;
    for (const std::string& candidate : candidates) {
        const std::size_t shorter = std::min(word.size(), candidate.size());
        const std::size_t longer = std::max(word.size(), candidate.size());
        if (candidate.empty() || longer - shorter > limit) continue;
        const std::size_t steps = distance(word, candidate);
        if (steps == 0) return {};
        if (steps > least || steps == longer || steps > limit) continue;
        is_tied = steps == least && (is_tied || !is_same(*best, candidate));
        if (steps < least) best = &candidate;
        least = steps;
    }
    return best == nullptr || is_tied ? std::string() : *best;
}

std::string nearest_word(std::string_view word, const std::vector<std::string>& candidates) {
    const auto same = std::find_if(candidates.begin(), candidates.end(),
                                   [&](const auto& other) { return is_same(word, other); });
    if (same != candidates.end()) return *same == word ? std::string() : *same;
    return nearest(word, candidates);
}

}  // namespace orvex::frontend
