// The names of a model, each once, in any case.
#pragma once

#include "frontend/syntax/tree.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// A table from names to numbers, counted from 0 in the order of insertion.
class NameTable {
  public:
    NameTable();

    // The number of a name, which is added if new.
    Index add(std::string_view name);

    // The number of a name, or no_index.
    Index find(std::string_view name) const;

    const std::string& text(Index number) const { return texts_[number]; }
    Index size() const { return static_cast<Index>(texts_.size()); }

  private:
    std::size_t slot_of(std::string_view name) const;
    void grow();

    std::vector<std::string> texts_;
    std::vector<Index> slots_;  // a power of two, at least half of them no_index
};

}  // namespace orvex::frontend
