// Requests that change a text.
#pragma once

#include "frontend/server/server.h"

namespace orvex::frontend {

Json prepare_renaming(Server& server, const Json& params);
Json renaming(Server& server, const Json& params);

// The layout of a text, of some of its lines, and of the line that the author has just left. A
// model with an error gets no edits.
Json formatting(Server& server, const Json& params);
Json range_formatting(Server& server, const Json& params);
Json line_formatting(Server& server, const Json& params);

}  // namespace orvex::frontend
