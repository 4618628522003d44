// The model pass: the program's only loop.
#pragma once

namespace orvex {

// Translates the model of the input file that the run control file asks for or, when it names an
// error file, all of them. Precondition: the input file is open.
// Stops: keyword-colon-missing, keyword-after-report, keyword-unknown, and those of the block
// writers.
void translate_models();

}  // namespace orvex
