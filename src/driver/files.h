// The files of a model: opening them, and completing the header file from the scratch files.
#pragma once

#include "text.h"

namespace orvex {

enum class Status { replace, old };

// Opens the unit: creates or replaces the named file, or opens an existing one. When that fails, a
// line on standard output ends the run: "FFOPEN: error opening file", with the status where it is
// "OLD".
void ffopen(int unit_number, const Text<255>& file, Status status);

// The end of a run whose scratch text found no room: the line "FFOPEN: error opening unit", and no
// half-written output file.
void report_scratch_failure(int unit_number);

// Completes the header file with the artificial equation, the default levels, the constraints, the
// model statement and the listing.
void trnscb();

}  // namespace orvex
