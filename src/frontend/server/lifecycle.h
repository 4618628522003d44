// Methods that begin and end the session, and those that report changes of the texts.
#pragma once

#include "frontend/server/server.h"

namespace orvex::frontend {

Json initialize(Server& server, const Json& params);
Json ignore_notification(Server& server, const Json& params);
Json shut_down(Server& server, const Json& params);
Json exit_server(Server& server, const Json& params);
Json set_trace(Server& server, const Json& params);
Json did_open(Server& server, const Json& params);
Json did_change(Server& server, const Json& params);
Json did_close(Server& server, const Json& params);

// The abilities that the server offers to every client, for the answer to initialize.
Json abilities_provided();

}  // namespace orvex::frontend
