// info and graph as JSON.
#pragma once

#include "frontend/commands/graph.h"
#include "frontend/reading/economy.h"

#include <string>

namespace orvex::frontend {

std::string info_json(const Economy& economy);
std::string graph_json(const Graph& graph);

}  // namespace orvex::frontend
