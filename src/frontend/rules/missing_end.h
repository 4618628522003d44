// Models whose $OFFTEXT is missing, so that they run into the host's text.
#pragma once

#include "frontend/findings/finding.h"
#include "frontend/model/model.h"
#include "frontend/syntax/source.h"

namespace orvex::frontend {

// The first record of the host's text that a model without an end runs into: from it on no record
// can be one of a model. no_index where there is none.
Index first_host_text(const Source& source, const Model& model);

// Ends the model before a record.
Fix ending_before(const Source& source, Index record);

}  // namespace orvex::frontend
