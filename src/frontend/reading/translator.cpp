#include "frontend/reading/translator.h"

namespace orvex::frontend {

Workplace::Workplace() = default;
Workplace::~Workplace() = default;
std::string find_translator(const std::string& given) { return given; }
RunResult run_translator(const std::string&, const Workplace&, std::string_view,
                         const std::vector<std::string>&, const RunSettings&) {
    return {};
}

}  // namespace orvex::frontend
