// Where findings go: the command's stream and the files of --report; and messages about the run, on
// standard error.
#pragma once

#include "frontend/base/streams.h"
#include "frontend/cli/options.h"
#include "frontend/findings/finding.h"
#include "frontend/findings/junit.h"
#include "frontend/findings/report.h"

#include <chrono>
#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace orvex::frontend {

struct Report {
    Format format = Format::text;
    // Empty for the command's stream.
    std::string path;
    bool colour = false;
    // Findings are not written.
    bool is_mute = false;
    bool first = true;
    // Of a file, until it is written.
    std::string text;
    JunitReport junit;
};

struct Reporter {
    Options options;
    Stream out{1, "", 0};
    Stream err{2, "", 0};
    // The first one is for the stream.
    std::vector<Report> reports;
    Summary summary;
    std::map<std::pair<std::string, Severity>, std::size_t> counts;
    // The code of the first error.
    std::string first_code;
    std::chrono::steady_clock::time_point shown;
    // Progress may be shown.
    bool progress = false;
    // Progress is on the screen.
    bool progress_on = false;
};

// Writes the heads of all reports.
void begin(Reporter& reporter);

// Begins a file, whose findings come next. Counts it.
void begin_file(Reporter& reporter, const std::string& path);

// Shows a finding in all reports, and counts it.
void show(Reporter& reporter, const Finding& finding);

// Shows the findings of a file. All errors are counted, but only as many as the options allow are
// shown.
void show_all(Reporter& reporter, const std::vector<Finding>& findings);

// Writes the command's output to standard output.
void put_output(Reporter& reporter, const std::string& output);

// Like show(), for a usage error that was found only after reading the files.
void show_usage(Reporter& reporter, const std::string& text, const std::string& hint);

// Shows the progress of a long run on a terminal.
void show_progress(Reporter& reporter, std::size_t done, std::size_t count);
void hide_progress(Reporter& reporter);

// Writes the files of --report, the tails and, in the formats for people, the closing lines, with
// `summary_line` among them if it is not empty. After a signal that ends the program, the stream
// gets nothing more. Returns the exit status.
int end(Reporter& reporter, const std::string& summary_line);

// Reports a usage error in the format that the options ask for, and in the files of --report that
// are not input files. Returns the exit status.
int report_usage(const Options& options, const std::string& text, const std::string& hint);

// "1 error", "2 errors", "no errors".
std::string counted(std::size_t count, const std::string& thing);

}  // namespace orvex::frontend
