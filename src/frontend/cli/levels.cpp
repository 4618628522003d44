#include "frontend/cli/levels.h"

#include <string>

namespace orvex::frontend {

namespace {

Level level_of(const Options& options, const std::string& code) {
    for (const std::string& key : {code, std::string("all")}) {
        if (const auto found = options.levels.find(key); found != options.levels.end())
            return found->second;
    }
    return Level::warning;
}

}  // namespace

void apply_levels(const Options& options, std::vector<Finding>& findings) {
    std::erase_if(findings, [&](const Finding& finding) {
        return finding.severity == Severity::warning &&
               level_of(options, finding.code) == Level::off;
    });
    for (Finding& finding : findings) {
        if (finding.severity == Severity::warning &&
            level_of(options, finding.code) == Level::error) {
            finding.severity = Severity::error;
        }
    }
}

}  // namespace orvex::frontend
