// The run control file, the program's only configuration: lines of a three-character label, one
// column that is ignored, and a value.
#pragma once

namespace orvex {

// Reads the open run control file into the run's settings.
// Ends the run, on standard error, with "STOP  INVALID INPUT TO ORVEXPP" for an unknown label and,
// with status 2, with " *** Invalid integer in run control file: <label> <value>" for a counter
// that is no number.
void read_control_file();

}  // namespace orvex
