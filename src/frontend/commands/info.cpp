#include "frontend/commands/info.h"

namespace orvex::frontend {

std::string info_text(const Economy&, bool) { return {}; }

}  // namespace orvex::frontend
