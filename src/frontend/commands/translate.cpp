#include "frontend/commands/translate.h"

namespace orvex::frontend {

Placed place_outputs(const Source&, const Checked&, const Options&,
                     const std::vector<std::string>&) {
    return {};
}
std::string depfile(const std::vector<std::string>&, const std::vector<std::string>&) { return {}; }
bool put_file(const std::string&, std::string_view, bool&) { return false; }

}  // namespace orvex::frontend
