#include "frontend/commands/json.h"

namespace orvex::frontend {

std::string info_json(const Economy&) { return {}; }
std::string graph_json(const Graph&) { return {}; }

}  // namespace orvex::frontend
