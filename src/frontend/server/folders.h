// The texts in the folders of the workspace that are not open.
#pragma once

#include "frontend/abilities/document.h"
#include "frontend/server/server.h"

#include <functional>

namespace orvex::frontend {

// Calls `take` once with each *.zlm file of the folders that is not open and can be read.
void each_closed_text(const Server& server, const std::function<void(const Document&)>& take);

}  // namespace orvex::frontend
