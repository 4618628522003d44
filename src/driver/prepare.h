// Everything before the first model: the audit line, the run control file and the input file.
#pragma once

#include "text/text.h"

namespace orvex {

// Prepares a run: registers with the companion library, reads the run control file at that path and
// opens the input file. The argument "AUDIT" asks for the audit line alone.
// Ends the run: library-missing, library-function-missing, library-version, library-refused;
// control-unreadable; as read_control_file and ffopen do; input-missing or, if no error file is
// named, header-unwritable.
void prepare_run(const Text<255>& argument);

}  // namespace orvex
