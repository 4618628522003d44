#include "frontend/session/mending.h"

#include "frontend/findings/failure.h"
#include "frontend/fixes/diff.h"
#include "frontend/rules/allow.h"
#include "frontend/session/rewriting.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace orvex::frontend {

namespace {

std::size_t error_count(const std::vector<Finding>& findings) {
    return static_cast<std::size_t>(
        std::count_if(findings.begin(), findings.end(),
                      [](const Finding& finding) { return finding.severity == Severity::error; }));
}

std::size_t unsafe_count(const std::vector<Finding>& findings) {
    return static_cast<std::size_t>(
        std::count_if(findings.begin(), findings.end(), [](const Finding& finding) {
            return finding.fix && finding.fix->confidence == Confidence::maybe;
        }));
}

// If a corrected text could not be checked, the reason is not a finding of the file, but must still
// be reported.
void keep_failures(const std::vector<Finding>& from, std::vector<Finding>& findings) {
    std::copy_if(from.begin(), from.end(), std::back_inserter(findings),
                 [](const Finding& finding) { return is_failure(finding.code); });
}

}  // namespace

void mend_file(File& file, const Options& options, const Check& check) {
    const Source& source = *file.source;
    Mended& mended = file.mended;
    Draft draft = begin_draft(source, file.checked.findings);
    if (options.fix || !options.add_allow) {
        make_fixes(draft, options.unsafe_fixes ? Confidence::maybe : Confidence::certain, check);
    }
    if (options.add_allow) {
        const AddedComments added = comments_for(draft.source, draft.findings);
        if (added.findings > 0) revise(draft, added.edits, check);
        mended.allowed = added.findings;
    }
    mended.is_refused = error_count(draft.findings) > error_count(file.checked.findings);
    if (mended.is_refused) keep_failures(draft.findings, file.checked.findings);
    const std::vector<Edit> edits = draft.revision.edits();
    mended.is_changed = !edits.empty() && !mended.is_refused;
    if (!mended.is_changed) return;
    mended.fixed = draft.fixed;
    if (options.diff) mended.diff = unified_diff(source.path, source.bytes, edits);
    mended.text = std::move(draft.source.bytes);
    mended.findings = std::move(draft.findings);
}

void place_mended(File& file, const Options& options, MendingTotals& totals) {
    Mended& mended = file.mended;
    const Source& source = *file.source;
    if (file.is_stdin && !options.diff) {
        if (mended.is_changed)
            file.output = std::move(mended.text);
        else
            file.output = source.bytes;
    } else if (options.diff) {
        file.output = std::move(mended.diff);
    } else if (mended.is_changed && !rewrite(file, mended.text)) {
        return;
    }
    const std::vector<Finding>& left = mended.is_changed ? mended.findings : file.checked.findings;
    if (!options.unsafe_fixes) totals.unsafe += unsafe_count(left);
    totals.refused += static_cast<std::size_t>(mended.is_refused);
    if (!mended.is_changed) return;
    ++totals.files;
    totals.fixed += mended.fixed;
    totals.allowed += mended.allowed;
    if (!options.diff) file.checked.findings = std::move(mended.findings);
}

}  // namespace orvex::frontend
