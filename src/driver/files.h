// Opening files, and ending the run when one cannot be opened.
#pragma once

#include "text/text.h"

namespace orvex {

enum class Status { replace, old };

// Opens the unit: creates or replaces the named file, or opens an existing one.
// Ends the run: open-output-failed, open-input-failed.
void ffopen(int unit_number, const Text<255>& file, Status status);

// Ends a run whose scratch text found no room: reports open-scratch-failed and leaves no
// half-written output file.
void report_scratch_failure(int unit_number);

}  // namespace orvex
