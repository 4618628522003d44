// The language server at work on descriptors: messages are read as they come, texts are checked
// when nothing waits, and the translator judges a text once nobody has changed it for a moment.
#pragma once

#include "frontend/cli/options.h"

namespace orvex::frontend {

// Serves a client on standard input and output until it ends. Returns the exit status: 0 after a
// shutdown, 1 where the client ends without one.
int run_server(const Options& options);

}  // namespace orvex::frontend
