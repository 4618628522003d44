#include "frontend/findings/failure.h"

#include "frontend/findings/messages.h"
#include "frontend/findings/wording.h"

#include <utility>

namespace orvex::frontend {

namespace {

Finding own_finding(Severity severity, std::string code, std::string message, Span span) {
    Finding finding{severity, std::move(code), std::move(message), std::move(span), {}};
    if (const MessageEntry* const entry = find_code(finding.code)) {
        finding.remarks.push_back({Severity::help, as_help(entry->cure), {}});
    }
    return finding;
}

}  // namespace

Finding failure(std::string code, std::string message, Span span) {
    return own_finding(Severity::error, std::move(code), std::move(message), std::move(span));
}

Finding warning(std::string code, std::string message, Span span) {
    return own_finding(Severity::warning, std::move(code), std::move(message), std::move(span));
}

}  // namespace orvex::frontend
