// Requests about the word that the user is typing or pointing at.
#pragma once

#include "frontend/server/server.h"

namespace orvex::frontend {

Json hover(Server& server, const Json& params);
Json completion(Server& server, const Json& params);
Json resolve_completion(Server& server, const Json& params);
Json signature_help(Server& server, const Json& params);

}  // namespace orvex::frontend
