#include "frontend/commands/check.h"

namespace orvex::frontend {

Checked check(const Source&, const Options&, const std::string&, const Workplace&) { return {}; }

}  // namespace orvex::frontend
