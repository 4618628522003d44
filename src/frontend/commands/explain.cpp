#include "frontend/commands/explain.h"

namespace orvex::frontend {

std::string explain(std::string_view, bool) { return {}; }
std::string list_codes() { return {}; }

}  // namespace orvex::frontend
