// Blocks of a sector or a consumer that already has one.
#pragma once

#include "frontend/model/model.h"
#include "frontend/rules/rows.h"
#include "frontend/syntax/source.h"

#include <vector>

namespace orvex::frontend {

struct RepeatedBlock {
    const Field* first;      // the head of the first block
    const Field* second;     // the head of another one with the same name and arguments
    Index meant = no_index;  // the only declared name of the kind without a block
};

// Those without a condition, in order.
std::vector<RepeatedBlock> read_repeated_blocks(const Source& source, const Model& model,
                                                const Rows& rows);

}  // namespace orvex::frontend
