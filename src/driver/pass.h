// The model pass: the program's only loop.
#pragma once

namespace orvex {

// Translates the model that the run control file asks for or, if that file names an error file, all
// models of the input. Precondition: the input file is open.
// Stops: keyword-colon-missing, keyword-after-report, keyword-unknown, and those of the block
// writers.
void translate_models();

}  // namespace orvex
