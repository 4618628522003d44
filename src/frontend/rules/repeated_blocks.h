// Blocks of a sector or a consumer that has one already.
#pragma once

#include "frontend/model/model.h"
#include "frontend/rules/rows.h"
#include "frontend/syntax/source.h"

#include <vector>

namespace orvex::frontend {

struct RepeatedBlock {
    const Field* first;      // the head of the block that is repeated
    const Field* second;     // that of the same name and arguments
    Index meant = no_index;  // the only declared name of the kind that has no block
};

// Those without a condition, in their order.
std::vector<RepeatedBlock> read_repeated_blocks(const Source& source, const Model& model,
                                                const Rows& rows);

}  // namespace orvex::frontend
