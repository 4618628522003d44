// Everything before the first model: the audit line, the run control file and the input file.
#pragma once

#include "text.h"

namespace orvex {

// Makes a run ready: registers with the companion library, reads the run control file of that path and
// opens the input file. Ends the run, with its message, when one of these fails, and for the argument
// "AUDIT", which asks for the audit line alone.
void start_up(const Text<255>& argument);

}  // namespace orvex
