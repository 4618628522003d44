// Everything before the first model: the audit line, the run control file and the input file.
#pragma once

#include "text.h"

namespace orvex {

// Makes a run ready: registers with the companion library, reads the run control file of that path
// and opens the input file. The argument "AUDIT" asks for the audit line alone. Ends the run, on
// standard output with " *** Could not create PAL object: ", with the lines from " *** Internal
// ORVEX preprocessor error " on where there is no control file, or as read_control_file and ffopen
// do; in the error file with " *** Cannot find file: " and " *** Nor can I find  : " or, where none
// is named, in the header file with "$ERROR Preprocessor failure.".
void start_up(const Text<255>& argument);

}  // namespace orvex
