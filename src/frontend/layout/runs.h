// The lines of a model that are laid out together.
#pragma once

#include "frontend/syntax/tree.h"

#include <cstdint>
#include <vector>

namespace orvex::frontend {

enum class RunKind : std::uint8_t {
    opening,  // a line of the opening record of a block with entries
    entries,  // entries, or records of a report, without anything between them
    names,    // of a declaration block, with everything between them
};

struct Run {
    RunKind kind = RunKind::entries;
    bool may_break = false;  // its lines may be continued after a "+"
    Index first = 0;         // records, the end exclusive
    Index end = 0;
};

// The runs of a model, in order.
std::vector<Run> runs_of(const Tree& tree, Index model);

}  // namespace orvex::frontend
