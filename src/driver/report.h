// Reporting an error: the error file, and the block at the end of the header file that makes the
// host's compile stop with a readable report.
#pragma once

#include "stop.h"

namespace orvex {

// Completes the header file with everything translated so far, symbol listing included, then
// reports the fault. Ends the run if the error file cannot be opened; the header file then has no
// error block.
void report(const ErrorStop& stop);

// Reports the fault in a header file that contains nothing else.
// Ends the run if the error file cannot be opened; the header file then stays unchanged.
void report(const OverflowStop& stop);

}  // namespace orvex
