// The run control file, the program's only configuration: lines of a three-character label, one column
// that is ignored, and a value.
#pragma once

namespace orvex {

// Reads the open run control file into the run's settings.
// Ends the run on a line with an unknown label (" INVALID INPUT TO ORVEXPP", on standard error) and,
// with status 2, on a counter that is no number.
void read_control_file();

}  // namespace orvex
