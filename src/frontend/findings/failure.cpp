#include "frontend/findings/failure.h"

#include "frontend/findings/messages.h"
#include "frontend/findings/wording.h"

namespace orvex::frontend {

Finding failure(std::string code, std::string message, Span span) {
    Finding finding{Severity::error, std::move(code), std::move(message), std::move(span), {}};
    if (const MessageEntry* const entry = find_code(finding.code)) {
        finding.remarks.push_back({Severity::help, as_help(entry->cure), {}});
    }
    return finding;
}

}  // namespace orvex::frontend
