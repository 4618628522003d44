#include "frontend/findings/failure.h"

#include "frontend/base/streams.h"
#include "frontend/findings/messages.h"
#include "frontend/findings/wording.h"

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <utility>
#include <vector>

namespace orvex::frontend {

namespace {

Finding own_finding(Severity severity, std::string code, const Values& values, Span span,
                    std::string_view variant) {
    Finding finding;
    finding.severity = severity;
    finding.code = std::move(code);
    finding.span = std::move(span);
    if (const MessageEntry* const entry = find_code(finding.code)) {
        finding.message = message_of(*entry, values, variant);
        finding.remarks.push_back({Severity::help, help_of(*entry, values, variant), {}});
    }
    return finding;
}

}  // namespace

Finding failure(std::string code, const Values& values, Span span, std::string_view variant) {
    return own_finding(Severity::error, std::move(code), values, std::move(span), variant);
}

Finding warning(std::string code, const Values& values, Span span, std::string_view variant) {
    return own_finding(Severity::warning, std::move(code), values, std::move(span), variant);
}

bool is_failure(std::string_view code) {
    constexpr std::string_view failures[] = {
        "file-name-unusable",        "file-unreadable",   "graphviz-failed", "graphviz-timeout",
        "memory-exhausted",          "output-unwritable", "read-failed",     "result-unknown",
        "temporary-folder-unusable", "translator-failed", "usage",           "write-failed"};
    return std::find(std::begin(failures), std::end(failures), code) != std::end(failures);
}

void set_help(Finding& finding, std::string text) {
    std::erase_if(finding.remarks,
                  [](const Remark& remark) { return remark.severity == Severity::help; });
    finding.remarks.push_back({Severity::help, std::move(text), {}});
}

Finding write_failure(const std::string& path, int error, Span span) {
    const std::string reason = error == ENXIO ? "no program reads from it" : system_message(error);
    return failure("output-unwritable", {{"path", path}, {"reason", reason}}, std::move(span));
}

}  // namespace orvex::frontend
