// The language server's loop over descriptors: messages are read as they arrive, texts are checked
// when no message waits, and the translator judges a text once it has been unchanged for a moment.
#pragma once

#include "frontend/cli/options.h"

namespace orvex::frontend {

// Serves a client on standard input and output until it ends. Returns the exit status: 0 after a
// shutdown, 1 if the client ends without one.
int run_server(const Options& options);

}  // namespace orvex::frontend
