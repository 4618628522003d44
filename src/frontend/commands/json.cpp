#include "frontend/commands/json.h"

namespace orvex::frontend {

std::string as_utf8(std::string_view text) { return std::string(text); }
std::string info_json(const Economy&, std::string_view) { return {}; }
std::string graph_json(const Graph&) { return {}; }

}  // namespace orvex::frontend
