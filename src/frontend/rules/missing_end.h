// Models without their $OFFTEXT, which therefore run into the host's text.
#pragma once

#include "frontend/findings/finding.h"
#include "frontend/model/model.h"
#include "frontend/syntax/source.h"

namespace orvex::frontend {

// The first record of the host's text that a model without an end runs into: no record from there
// on can belong to a model. no_index if there is none.
Index first_host_text(const Source& source, const Model& model);

// Ends the model before a record.
Fix ending_before(const Source& source, Index record);

}  // namespace orvex::frontend
