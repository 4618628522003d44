#include "frontend/commands/fmt.h"

#include "frontend/findings/failure.h"
#include "frontend/findings/place.h"
#include "frontend/fixes/diff.h"
#include "frontend/fixes/revision.h"
#include "frontend/layout/layout.h"
#include "frontend/session/rewriting.h"
#include "frontend/session/session.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace orvex::frontend {

namespace {

// The totals over all files.
struct Totals {
    std::size_t files = 0;    // files that are, or would be, changed
    std::size_t skipped = 0;  // models with an error
};

// The edits of all models without errors.
std::vector<Edit> layout_of_file(const File& file) {
    std::vector<Edit> edits;
    for (const Model& model : file.checked.models) {
        if (!may_be_laid_out(model)) continue;
        std::vector<Edit> of_model = layout_of(*file.source, model);
        std::move(of_model.begin(), of_model.end(), std::back_inserter(edits));
    }
    return edits;
}

// The finding of --check about a file: the first place that would change.
Finding difference(const Source& source, bool is_stdin, const Edit& first) {
    return failure("layout-differs", {{"path", is_stdin ? "-" : source.path}},
                   record_span(source, line_of(source.tree, static_cast<Offset>(first.begin))));
}

void format_file(File& file, const Options& options) {
    std::vector<Finding>& findings = file.checked.findings;
    std::erase_if(findings,
                  [](const Finding& finding) { return finding.severity != Severity::error; });
    const std::vector<Edit> edits = layout_of_file(file);
    Mended& mended = file.mended;
    mended.is_changed = !edits.empty();
    if (!mended.is_changed) return;
    const Source& source = *file.source;
    if (options.diff) mended.diff = unified_diff(source.path, source.bytes, edits);
    if (options.check_only)
        findings.push_back(difference(source, file.is_stdin, edits.front()));
    else if (!options.diff)
        mended.text = edited(source.bytes, edits);
}

std::size_t count_skipped(const File& file) {
    const std::vector<Model>& models = file.checked.models;
    const auto skipped = std::count_if(models.begin(), models.end(),
                                       [](const Model& model) { return !may_be_laid_out(model); });
    return static_cast<std::size_t>(skipped);
}

void place_formatted(File& file, const Options& options, Totals& totals) {
    Mended& mended = file.mended;
    totals.skipped += count_skipped(file);
    if (options.diff) {
        file.output = std::move(mended.diff);
    } else if (file.is_stdin && !options.check_only) {
        file.output = mended.is_changed ? mended.text : file.source->bytes;
    } else if (mended.is_changed && !options.check_only && !rewrite(file, mended.text)) {
        return;
    }
    totals.files += static_cast<std::size_t>(mended.is_changed);
}

// "formatted 2 files; 1 model with errors left as it is"
std::string summary_line(const Options& options, const Totals& totals) {
    const bool only_shows = options.check_only || options.diff;
    std::string text = only_shows ? "would format " : "formatted ";
    text += counted(totals.files, "file");
    if (totals.skipped > 0)
        text += "; " + counted(totals.skipped, "model") + " with errors left unchanged";
    return text;
}

}  // namespace

int run_fmt(const Options& options) {
    Totals totals;
    Steps steps;
    steps.searches_folders = true;
    steps.reads_only = true;
    steps.work = [&](File& file) { format_file(file, options); };
    steps.finish = [&](File& file, const Inputs&) { place_formatted(file, options, totals); };
    steps.end = [&](Reporter& reporter, const Inputs&) {
        set_diff_status(options, totals.files, reporter);
    };
    steps.summarise = [&](Summary&) { return summary_line(options, totals); };
    return run_session(options, steps);
}

}  // namespace orvex::frontend
