// Lists of elements of one length: the members of a set, or the places of a parameter.
#pragma once

#include "frontend/syntax/tree.h"

#include <cstddef>
#include <span>
#include <vector>

namespace orvex::frontend {

// A table from lists of `width` elements to numbers, counted from 0 in the order of insertion.
class Tuples {
  public:
    explicit Tuples(std::size_t width = 0);

    // The number of a list, which is added if new. Precondition: it has `width` elements.
    Index add(std::span<const Index> tuple);

    // The number of a list, or no_index.
    Index find(std::span<const Index> tuple) const;

    std::span<const Index> tuple(Index number) const;
    Index size() const { return size_; }
    std::size_t width() const { return width_; }

  private:
    std::size_t slot_of(std::span<const Index> tuple) const;
    void grow();

    std::size_t width_;
    Index size_ = 0;
    std::vector<Index> elements_;  // of all lists, concatenated
    std::vector<Index> slots_;     // a power of two, at least half of them no_index
};

}  // namespace orvex::frontend
