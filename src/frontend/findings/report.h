// A report: findings written in one format to one place, as they come.
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

// The format of that name ("short" is brief); none for another name.
std::optional<Format> format_of(std::string_view name);

// How many findings have a code and a severity.
struct CodeCount {
    std::string code;
    Severity severity = Severity::error;
    std::size_t count = 0;
};

// Paths of outputs: those that were written, and those that would not have changed.
struct OutputFiles {
    std::vector<std::string> written;
    std::vector<std::string> unchanged;
};

// What a report ends with.
struct Summary {
    std::size_t files = 0;
    std::size_t errors = 0;
    std::size_t warnings = 0;
    // Errors that are counted and not shown: the limit of a file was reached.
    std::size_t hidden = 0;
    // Exit status.
    int status = 0;
    // Of translate.
    std::optional<OutputFiles> outputs = std::nullopt;
    // Where they are wanted, the most frequent first.
    std::optional<std::vector<CodeCount>> statistics = std::nullopt;
};

// What github, junit and sarif end with where there is more.
constexpr std::string_view more_errors =
    "there are more errors: `--max-errors` limits how many are shown";

// The text of each part of a report, to be written one after the other. A report without findings
// is valid in its format. `colour` matters to text alone. Those of junit are empty
// (findings/junit.h).
std::string report_head(Format format);
std::string report_finding(Format format, const Finding& finding, bool first, bool colour);
std::string report_tail(Format format, const Summary& summary);

// A finding with its line, the number of the line in a margin and "^" under the place; without a
// line end after it.
std::string rendered(const Finding& finding, bool colour);

// The colour of a severity.
Style style_of(Severity severity);

// path:line:column: error: text [code]
std::string brief(const Finding& finding);

}  // namespace orvex::frontend
