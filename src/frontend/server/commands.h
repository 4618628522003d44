// Commands that the client runs on a text.
#pragma once

#include "frontend/server/server.h"

namespace orvex::frontend {

// "orvex.translate" and "orvex.picture", each with the URI of an open text: write the outputs of
// its models, or a picture of each, next to the file, and return their paths. Throws RequestError
// if the file is not in a folder of the workspace, or the command fails.
Json execute_command(Server& server, const Json& params);

// The names of the commands, for the answer to initialize.
Json command_names();

}  // namespace orvex::frontend
