// Rows that do not belong to a production or demand block: before the first block of the model, in
// a block of declarations, or in a block of the other kind.
#pragma once

#include "frontend/model/model.h"
#include "frontend/rules/rows.h"
#include "frontend/syntax/source.h"

#include <vector>

namespace orvex::frontend {

// Consecutive rows.
struct LostRows {
    Index record;           // of the first one
    Index end;              // after the last one
    unsigned begins;        // what the label of the first one begins, as notation::Begins
    bool is_declared;       // they are read as declarations
    bool is_found = false;  // an indented keyword before them is the cause
};

// The rows before the first block and in declarations, in the order of the file.
std::vector<LostRows> read_lost_rows(const Source& source, const Model& model);

}  // namespace orvex::frontend
