// The run control file, the program's only configuration: lines of a three-character label, one
// ignored column, and a value.
#pragma once

namespace orvex {

// Reads the open run control file into the run's settings.
// Ends the run: control-label-unknown; control-number-invalid, with status 2.
void read_control_file();

}  // namespace orvex
