// A report: findings written in one format to one place, as they arrive.
#pragma once

#include "frontend/base/style.h"
#include "frontend/findings/finding.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

enum class Format { text, brief, json, sarif, github, junit };

// The format with that name ("short" is brief); none for an unknown name.
std::optional<Format> format_of(std::string_view name);

// How many findings have a code and a severity.
struct CodeCount {
    std::string code;
    Severity severity = Severity::error;
    std::size_t count = 0;
};

// Paths of outputs: those written, and those that would not have changed.
struct OutputFiles {
    std::vector<std::string> written;
    std::vector<std::string> unchanged;
};

// What a report ends with.
struct Summary {
    std::size_t files = 0;
    std::size_t errors = 0;
    std::size_t warnings = 0;
    // Errors that are counted but not shown: the limit of a file was reached.
    std::size_t hidden = 0;
    // Exit status.
    int status = 0;
    // Only for translate.
    std::optional<OutputFiles> outputs = std::nullopt;
    // If wanted, the most frequent first.
    std::optional<std::vector<CodeCount>> statistics = std::nullopt;
};

// The last line of github, junit and sarif reports if there are more errors.
constexpr std::string_view more_errors =
    "there are more errors: `--max-errors` limits how many are shown";

// The text of each part of a report, to be written one after the other. A report without findings
// is valid in its format. `colour` only affects text. For junit the parts are empty
// (findings/junit.h).
std::string report_head(Format format);
std::string report_finding(Format format, const Finding& finding, bool first, bool colour);
std::string report_tail(Format format, const Summary& summary);

// A finding with its line, the line number in a margin and "^" under the place; without a final
// line end.
std::string rendered(const Finding& finding, bool colour);

// The colour of a severity.
Style style_of(Severity severity);

// path:line:column: error: text [code]
std::string brief(const Finding& finding);

}  // namespace orvex::frontend
