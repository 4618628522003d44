// "Did you mean ...?"
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// The candidate nearest to `word`, ignoring case: at most a third of its letters (and at least one,
// but not all) inserted, left out, replaced or swapped with their neighbour. Empty if none is near
// enough, two are equally near, or one is the word itself.
std::string nearest(std::string_view word, const std::vector<std::string>& candidates);

// The same, but case matters: a candidate that differs only in case is the nearest.
std::string nearest_word(std::string_view word, const std::vector<std::string>& candidates);

}  // namespace orvex::frontend
