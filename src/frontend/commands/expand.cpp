#include "frontend/commands/expand.h"

#include "frontend/cli/levels.h"
#include "frontend/expansion/expand.h"
#include "frontend/expansion/summary.h"
#include "frontend/session/command_data.h"
#include "frontend/session/session.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

namespace {

// Thrown when standard output is closed.
struct Closed {};

struct Work {
    const Options& options;
    CommandData data;
    // For the current file, in order.
    std::vector<std::unique_ptr<Expansion>> ready;
};

// Do the findings allow the model to be printed?
bool is_good(const Options& options, const std::vector<Finding>& findings) {
    return std::none_of(findings.begin(), findings.end(), [&](const Finding& finding) {
        return finding.severity == Severity::error ||
               (options.error_on_warnings && finding.severity == Severity::warning);
    });
}

std::string shown(const Options& options, const ModelSize& size) {
    return options.format == Format::json ? size_json(size) : size_text(size);
}

// Prepares a model for printing, or adds its size to the output.
void take_model(Work& work, const GeneratedModel& generated, File& file) {
    const Options& options = work.options;
    std::vector<Finding> findings;
    ModelSize size;
    auto expansion = std::make_unique<Expansion>();
    bool is_clear = false;
    if (options.set_sizes.empty()) {
        is_clear = prepare_expansion(generated, work.data.files, stop_if_interrupted, *expansion,
                                     findings);
        if (is_clear && options.summary) size = size_of(generated, *expansion);
    } else {
        is_clear = bound_size(generated, work.data.files, options.set_sizes, size, findings);
    }
    apply_levels(options, findings);
    if (is_clear && is_good(options, findings)) {
        if (options.summary) {
            file.output += shown(options, size);
        } else {
            work.ready.push_back(std::move(expansion));
        }
    }
    std::move(findings.begin(), findings.end(), std::back_inserter(file.checked.findings));
}

void print(Work& work, Reporter& reporter) {
    const TakeLine put_line = [&](std::string_view line, Range) {
        put(reporter.out, line);
        put(reporter.out, "\n");
        if (reporter.out.error != 0) throw Closed();
    };
    if (!work.ready.empty()) hide_progress(reporter);
    try {
        for (const auto& expansion : work.ready) expand(*expansion, stop_if_interrupted, put_line);
    } catch (const Closed&) {
        // The session notices that its output is closed.
    }
    work.ready.clear();
}

// Has everything that may use a name been read: every model, and everything in it?
bool has_read_all(const Reporter& reporter) {
    constexpr std::string_view harmless[] = {"data-missing", "data-malformed", "value-not-finite"};
    return std::all_of(reporter.counts.begin(), reporter.counts.end(), [&](const auto& row) {
        const auto& [code, severity] = row.first;
        return severity != Severity::error ||
               std::find(std::begin(harmless), std::end(harmless), code) != std::end(harmless);
    });
}

}  // namespace

int run_expand(const Options& options) {
    Options quiet = options;
    quiet.levels["all"] = Severity::off;
    // It is an error if there is nothing to print, unless the user has set its level.
    quiet.levels.try_emplace("model-missing", Severity::error);
    Work work{options, {}, {}};
    Steps steps;
    steps.wanted.models = true;
    steps.wanted.outputs = true;
    steps.start = [&](const std::vector<File>&) { read_command_data(options, work.data); };
    steps.finish = [&](File& file, const Inputs&) {
        take_models(file, work.data,
                    [&](const GeneratedModel& generated) { take_model(work, generated, file); });
    };
    steps.print = [&](File&, Reporter& reporter) { print(work, reporter); };
    steps.end = [&](Reporter& reporter, const Inputs&) {
        if (has_read_all(reporter)) show_unused_names(work.data, options, reporter);
    };
    return run_session(quiet, steps);
}

}  // namespace orvex::frontend
