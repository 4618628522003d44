#include "frontend/cli/reporter.h"

#include "frontend/base/files.h"
#include "frontend/base/interrupts.h"
#include "frontend/cli/inputs.h"
#include "frontend/findings/failure.h"
#include "frontend/findings/place.h"

#include <algorithm>
#include <cerrno>
#include <string_view>

namespace orvex::frontend {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

// Progress is shown only for work that takes longer than a moment, and updated no faster than it
// can be read.
constexpr milliseconds moment{1000};
constexpr milliseconds step{100};

constexpr std::string_view erase_line = "\r\x1b[K";

int status_of(std::string_view code) { return is_failure(code) ? 2 : 1; }

// Does a command that changes files print text: a diff, or the new text of standard input?
bool prints_text(const Options& options) {
    const auto& files = options.files;
    const bool has_stdin = std::find(files.begin(), files.end(), "-") != files.end();
    const bool formats = options.command == Command::fmt && !options.check_only;
    return options.diff || ((options.fix || options.add_allow || formats) && has_stdin);
}

// For check, the findings are the output; the other commands have another output, or none, on
// standard output.
Stream& findings_stream(Reporter& reporter) {
    const Command command = reporter.options.command;
    const bool has_product = command == Command::translate || command == Command::info ||
                             command == Command::graph || command == Command::expand ||
                             command == Command::balance;
    return has_product || prints_text(reporter.options) ? reporter.err : reporter.out;
}

void write(Reporter& reporter, Report& report, std::string_view text) {
    if (report.path.empty()) {
        put(findings_stream(reporter), text);
    } else {
        report.text += text;
    }
}

void add(Reporter& reporter, Report& report, const Finding& finding) {
    if (report.is_mute) return;
    if (report.format == Format::junit) {
        add_finding(report.junit, finding);
        return;
    }
    write(reporter, report, report_finding(report.format, finding, report.first, report.colour));
    report.first = false;
}

std::string tail(const Report& report, const Summary& summary) {
    return report.format == Format::junit ? junit_text(report.junit, summary)
                                          : report_tail(report.format, summary);
}

bool for_people(Format format) { return format == Format::text || format == Format::brief; }

// "1 error, 2 warnings in 3 files"; empty if there is nothing to report.
std::string verdict(const Reporter& reporter) {
    const Summary& summary = reporter.summary;
    const std::string files = counted(summary.files, "file");
    if (summary.errors + summary.warnings == 0) {
        return reporter.options.command == Command::check
                   ? "checked " + files + ": no errors, no warnings"
                   : "";
    }
    std::string text;
    if (summary.errors > 0) text = counted(summary.errors, "error");
    if (summary.warnings > 0) {
        text += (text.empty() ? "" : ", ") + counted(summary.warnings, "warning");
    }
    if (summary.files > 0) text += " in " + files;
    if (summary.hidden > 0) {
        text +=
            "; `--max-errors " + std::to_string(reporter.options.max_errors) + "` hides the rest";
    }
    return text;
}

void put_closing_lines(Reporter& reporter, const std::string& summary_line) {
    if (reporter.options.quiet || !for_people(reporter.options.format)) return;
    if (!reporter.first_code.empty() && reporter.options.format == Format::text) {
        put(reporter.err, "for more about an error: orvex explain " + reporter.first_code + "\n");
    }
    if (!summary_line.empty()) put(reporter.err, summary_line + "\n");
    const std::string text = verdict(reporter);
    if (!text.empty()) put(reporter.err, text + "\n");
}

void count(Reporter& reporter, const Finding& finding) {
    Summary& summary = reporter.summary;
    ++reporter.counts[{finding.code, finding.severity}];
    if (finding.severity == Severity::error) {
        ++summary.errors;
        summary.status = std::max(summary.status, status_of(finding.code));
        if (reporter.first_code.empty()) reporter.first_code = finding.code;
    } else if (finding.severity == Severity::warning) {
        ++summary.warnings;
        if (reporter.options.error_on_warnings) summary.status = std::max(summary.status, 1);
    }
}

// Applies the options to the summary.
void complete(Reporter& reporter) {
    Summary& summary = reporter.summary;
    if (reporter.options.exit_zero && summary.status == 1) summary.status = 0;
    if (!reporter.options.statistics) return;
    std::vector<CodeCount>& rows = summary.statistics.emplace();
    for (const auto& [key, count] : reporter.counts) rows.push_back({key.first, key.second, count});
    std::stable_sort(rows.begin(), rows.end(),
                     [](const CodeCount& a, const CodeCount& b) { return a.count > b.count; });
}

// All files that the command line may refer to, including those in its folders.
FileSet possible_inputs(const Options& options) {
    FileSet inputs;
    add_file(inputs, options.depfile);
    for (const std::string& path : options.files) {
        if (path == "-") add_file(inputs, "/dev/stdin");
        try {
            for (const std::string& file : expand_folders(expand_patterns({path})))
                add_file(inputs, file);
        } catch (const UsageError&) {
            // There is no such file.
        }
    }
    return inputs;
}

// Drops --report files that are inputs: a usage error must not overwrite them.
void drop_inputs(Options& options) {
    FileSet reports;
    for (const auto& [format, path] : options.reports) add_file(reports, path);
    if (reports.empty()) return;
    const FileSet inputs = possible_inputs(options);
    std::erase_if(options.reports,
                  [&](const auto& report) { return has_file(inputs, report.second); });
}

void write_report_files(Reporter& reporter) {
    for (std::size_t i = 1; i < reporter.reports.size(); ++i) {
        Report& report = reporter.reports[i];
        bool changed = false;
        const std::string text = report.text + tail(report, reporter.summary);
        if (put_file(report.path, text, changed)) continue;
        const int error = errno;
        if (interrupt_signal() != 0) return;
        show(reporter, write_failure(report.path, error, whole_file(report.path)));
    }
}

}  // namespace

std::string counted(std::size_t count, const std::string& thing) {
    return (count == 0 ? "no" : std::to_string(count)) + " " + thing + (count == 1 ? "" : "s");
}

void begin(Reporter& reporter) {
    const Options& options = reporter.options;
    Report on_stream;
    on_stream.format = options.format;
    on_stream.colour = use_colour(findings_stream(reporter), options.colour);
    reporter.reports.push_back(on_stream);
    for (const auto& [format, path] : options.reports) {
        Report report;
        report.format = format;
        report.path = path;
        reporter.reports.push_back(report);
    }
    for (Report& report : reporter.reports) write(reporter, report, report_head(report.format));
    reporter.shown = steady_clock::now() + moment - step;
    reporter.progress = !options.quiet && for_people(options.format) && is_terminal(reporter.err);
}

void begin_file(Reporter& reporter, const std::string& path) {
    ++reporter.summary.files;
    for (Report& report : reporter.reports) {
        if (report.format == Format::junit) add_file(report.junit, path);
    }
}

void show(Reporter& reporter, const Finding& finding) {
    hide_progress(reporter);
    count(reporter, finding);
    for (Report& report : reporter.reports) add(reporter, report, finding);
}

void show_all(Reporter& reporter, const std::vector<Finding>& findings) {
    const std::size_t most = reporter.options.max_errors;
    std::size_t errors = 0;
    for (const Finding& finding : findings) {
        errors += static_cast<std::size_t>(finding.severity == Severity::error);
        const bool is_hidden = finding.severity == Severity::error && most != 0 && errors > most;
        if (is_hidden) {
            count(reporter, finding);
            ++reporter.summary.hidden;
        } else {
            show(reporter, finding);
        }
    }
}

void put_output(Reporter& reporter, const std::string& output) {
    if (!output.empty()) hide_progress(reporter);
    put(reporter.out, output);
}

void show_usage(Reporter& reporter, const std::string& text, const std::string& hint) {
    Finding finding;
    finding.code = "usage";
    finding.message = text;
    if (!hint.empty()) finding.remarks.push_back({Severity::help, hint, {}});
    show(reporter, finding);
}

void show_progress(Reporter& reporter, std::size_t done, std::size_t count) {
    if (!reporter.progress || done == count) return;
    const auto now = steady_clock::now();
    if (now - reporter.shown < step) return;
    reporter.shown = now;
    reporter.progress_on = true;
    put(reporter.err,
        std::string(erase_line) + std::to_string(done) + " of " + counted(count, "file"));
    flush(reporter.err);
}

void hide_progress(Reporter& reporter) {
    if (!reporter.progress_on) return;
    reporter.progress_on = false;
    put(reporter.err, erase_line);
    flush(reporter.err);
}

int end(Reporter& reporter, const std::string& summary_line) {
    hide_progress(reporter);
    complete(reporter);
    write_report_files(reporter);
    complete(reporter);
    if (interrupt_signal() != 0) return reporter.summary.status;
    Report& report = reporter.reports.front();
    write(reporter, report, tail(report, reporter.summary));
    const bool good = flush(reporter.out);
    put_closing_lines(reporter, summary_line);
    if (!good) {
        reporter.summary.status = 2;
        put(reporter.err, failure_line(reporter.out));
    }
    flush(reporter.err);
    return reporter.summary.status;
}

int report_usage(const Options& options, const std::string& text, const std::string& hint) {
    Reporter reporter;
    reporter.options = options;
    drop_inputs(reporter.options);
    const bool is_plain = for_people(options.format);
    if (is_plain) {
        put(reporter.err, "error: " + text + "\n");
        if (!hint.empty()) put(reporter.err, "help: " + hint + "\n");
        reporter.options.quiet = true;
    }
    begin(reporter);
    reporter.reports.front().is_mute = is_plain;
    show_usage(reporter, text, hint);
    reporter.reports.front().is_mute = false;
    return end(reporter, "");
}

}  // namespace orvex::frontend
