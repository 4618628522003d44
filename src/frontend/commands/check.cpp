#include "frontend/commands/check.h"

#include "frontend/session/mending.h"
#include "frontend/session/rewriting.h"
#include "frontend/session/session.h"

#include <string>

namespace orvex::frontend {

namespace {

// "fixed 3 findings in 2 files; 1 more needs `--unsafe-fixes`"
std::string summary_line(const Options& options, const MendingTotals& totals) {
    std::string text;
    const auto add = [&](const std::string& part) { text += (text.empty() ? "" : "; ") + part; };
    const std::string in_files = " in " + counted(totals.files, "file");
    if (totals.fixed > 0) {
        const std::string verb = options.diff ? "would fix " : "fixed ";
        add(verb + counted(totals.fixed, "finding") + in_files);
    }
    if (totals.allowed > 0) {
        const std::string verb = options.diff ? "would allow " : "allowed ";
        add(verb + counted(totals.allowed, "finding") + in_files);
    }
    if (totals.unsafe > 0) {
        const std::string verb = totals.unsafe == 1 ? " more needs" : " more need";
        add(std::to_string(totals.unsafe) + verb + " `--unsafe-fixes`");
    }
    if (totals.refused > 0)
        add(counted(totals.refused, "file") + " left unchanged: there would be more errors");
    return text;
}

}  // namespace

int run_check(const Options& options) {
    Steps steps;
    MendingTotals totals;
    steps.searches_folders = true;
    if (options.fix || options.diff || options.add_allow) {
        steps.mend = [&](File& file, const Check& check) { mend_file(file, options, check); };
        steps.finish = [&](File& file, const Inputs&) { place_mended(file, options, totals); };
        steps.end = [&](Reporter& reporter, const Inputs&) {
            set_diff_status(options, totals.files, reporter);
        };
        steps.summarise = [&](Summary&) { return summary_line(options, totals); };
    }
    return run_session(options, steps);
}

}  // namespace orvex::frontend
