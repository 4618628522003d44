// Reporting an error: the error file, and the block at the end of the header file that makes the
// host's compile stop with a readable report.
#pragma once

#include "stop.h"

namespace orvex {

// Completes the header file as far as the model got, symbol listing included, then reports the
// fault. Ends the run when the error file cannot be opened; the header file then has no error
// block.
void report(const ErrorStop& stop);

// Reports the fault in a header file that holds nothing else.
// Ends the run when the error file cannot be opened; the header file then stays as it is.
void report(const OverflowStop& stop);

}  // namespace orvex
