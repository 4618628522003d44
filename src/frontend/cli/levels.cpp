#include "frontend/cli/levels.h"

#include <string>

namespace orvex::frontend {

namespace {

// The level set for the code, else the one set for all. The latter applies only to warnings, except
// that "off" also drops notes.
Severity level_of(const Options& options, const std::string& code, Severity level) {
    const auto of_code = options.levels.find(code);
    if (of_code != options.levels.end()) return of_code->second;
    const auto of_all = options.levels.find("all");
    const bool is_taken = of_all != options.levels.end() &&
                          (level == Severity::warning || of_all->second == Severity::off);
    return is_taken ? of_all->second : level;
}

}  // namespace

void apply_levels(const Options& options, std::vector<Finding>& findings) {
    for (Finding& finding : findings) {
        if (finding.severity != Severity::error)
            finding.severity = level_of(options, finding.code, finding.severity);
    }
    std::erase_if(findings,
                  [](const Finding& finding) { return finding.severity == Severity::off; });
}

bool is_off(const Options& options, std::string_view code, Severity level) {
    return level_of(options, std::string(code), level) == Severity::off;
}

}  // namespace orvex::frontend
