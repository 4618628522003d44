// One run of the translator.
#pragma once

#include "text/text.h"

namespace orvex {

// Runs the translator from a clean state with its command-line argument (blank if there was none)
// and returns the exit status. May be called repeatedly.
int run(View argument);

}  // namespace orvex
