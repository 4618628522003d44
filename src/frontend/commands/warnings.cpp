#include "frontend/commands/warnings.h"

namespace orvex::frontend {

void warn_of_lines(const Source&, const std::vector<bool>&, std::vector<Finding>&) {}
void warn_of_names(const Source&, const Economy&, std::vector<Finding>&) {}
void apply_levels(const Options&, std::vector<Finding>&) {}

}  // namespace orvex::frontend
