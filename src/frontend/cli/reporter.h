// Where findings go: the command's stream and the files of --report; and what is told of the run
// beside them, on standard error.
#pragma once

#include "frontend/base/streams.h"
#include "frontend/cli/options.h"
#include "frontend/findings/finding.h"
#include "frontend/findings/report.h"

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

namespace orvex::frontend {

struct Report {
    Format format = Format::text;
    std::string path;  // empty for the command's stream
    bool colour = false;
    bool first = true;
    std::string text;  // of a file, until it is written
};

struct Reporter {
    Options options;
    Stream out{1, "", 0};
    Stream err{2, "", 0};
    std::vector<Report> reports;  // the first is that of the stream
    Summary summary;
    std::string first_code;  // of the first error
    std::chrono::steady_clock::time_point shown;
    bool progress = false;     // may be shown
    bool progress_on = false;  // stands on the terminal
};

// Writes the heads of all reports.
void begin(Reporter& reporter);

// Shows a finding in all reports, and counts it.
void show(Reporter& reporter, const Finding& finding);

// The same for a wrong use that only the files have shown.
void show_usage(Reporter& reporter, const std::string& text, const std::string& hint);

// Shows how far a long run is, on a terminal.
void show_progress(Reporter& reporter, std::size_t done, std::size_t count);
void hide_progress(Reporter& reporter);

// Writes the files of --report, the tails, and for people the closing line, which begins with
// `news` where there is any. Returns the exit status.
int end(Reporter& reporter, const std::string& news);

// A wrong use of the program, in the format that the options ask for. Returns the exit status.
int report_usage(const Options& options, const std::string& text, const std::string& hint);

// "1 error", "2 errors", "no errors".
std::string counted(std::size_t count, const std::string& thing);

}  // namespace orvex::frontend
