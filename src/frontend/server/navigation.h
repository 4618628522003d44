// Requests that lead from one place to others.
#pragma once

#include "frontend/server/server.h"

namespace orvex::frontend {

Json definition(Server& server, const Json& params);
Json declaration(Server& server, const Json& params);
Json references(Server& server, const Json& params);
Json highlights(Server& server, const Json& params);
Json document_symbols(Server& server, const Json& params);
Json workspace_symbols(Server& server, const Json& params);

}  // namespace orvex::frontend
