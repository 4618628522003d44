// Do the translator and the models built from a tree agree about an input?
#pragma once

#include <string>

namespace agree {

// The first difference, or nothing. If bit n of `skipped` is set, model n is left out of the run.
std::string difference(const std::string& input, unsigned skipped = 0);

// The input in a fuzzer file: after two bytes, the text that follows the first NUL.
std::string fuzzed_input(const std::string& data);

}  // namespace agree
