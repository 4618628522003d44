// Requests about the findings in texts.
#pragma once

#include "frontend/server/server.h"

namespace orvex::frontend {

Json findings_of_text(Server& server, const Json& params);
Json findings_of_folders(Server& server, const Json& params);
Json code_actions(Server& server, const Json& params);

// The entry of a code as a document, which a command of the client asks for.
Json explanation(Server& server, const Json& params);

}  // namespace orvex::frontend
