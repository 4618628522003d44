// Requests that change a text.
#pragma once

#include "frontend/server/server.h"

namespace orvex::frontend {

Json prepare_renaming(Server& server, const Json& params);
Json renaming(Server& server, const Json& params);

}  // namespace orvex::frontend
