// Requests about how a text is shown.
#pragma once

#include "frontend/server/server.h"

namespace orvex::frontend {

Json all_tokens(Server& server, const Json& params);
Json changed_tokens(Server& server, const Json& params);
Json tokens_in_range(Server& server, const Json& params);
Json folding_ranges(Server& server, const Json& params);
Json selection_ranges(Server& server, const Json& params);
Json inlay_hints(Server& server, const Json& params);
Json code_lenses(Server& server, const Json& params);
Json document_links(Server& server, const Json& params);

// The legend of the tokens, for the answer to initialize.
Json token_legend();

}  // namespace orvex::frontend
