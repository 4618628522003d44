// Do the translator and the models that are built from a tree say the same about an input?
#pragma once

#include <string>

namespace agree {

// The first difference, or nothing. Bit n of `skipped` leaves the lines of model n out of the run.
std::string difference(const std::string& input, unsigned skipped = 0);

// The input in a file of the fuzzers: what follows the first NUL after two bytes.
std::string fuzzed_input(const std::string& data);

}  // namespace agree
