#include "fix_properties.h"

#include "frontend/findings/place.h"
#include "frontend/fixes/choice.h"
#include "frontend/fixes/diff.h"
#include "frontend/fixes/draft.h"
#include "frontend/fixes/revision.h"
#include "frontend/model/build.h"
#include "frontend/rules/allow.h"
#include "frontend/rules/errors.h"
#include "frontend/rules/host_text.h"
#include "frontend/rules/rule.h"
#include "frontend/rules/selection.h"
#include "frontend/syntax/source.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <vector>

namespace fix_properties {

using namespace orvex::frontend;
using std::string;
using Edits = std::vector<Edit>;

namespace {

// The findings without the translator.
std::vector<Finding> check(const Source& source) {
    std::vector<Finding> findings;
    const Selection selection = select_models(source, "", findings);
    const orvex::frontend::HostText host = orvex::frontend::read_host_text(source);
    for (const Index index : selection.models) {
        const Model model = build_model(source.bytes, source.tree, index, false);
        add_errors(source, model, findings);
        run_model_rules(source, host, model, findings);
    }
    run_file_rules(source, findings);
    std::vector<Allowance> allowances = read_allowances(source);
    remove_allowed(allowances, findings);
    add_unused_allowances(
        source, allowances, [](const Allowance&) { return true; }, findings);
    for (Finding& finding : findings) {
        if (finding.fix) place_fix(source, *finding.fix);
    }
    return findings;
}

std::size_t error_count(const std::vector<Finding>& findings) {
    return static_cast<std::size_t>(
        std::count_if(findings.begin(), findings.end(),
                      [](const Finding& finding) { return finding.severity == Severity::error; }));
}

// Are the edits in order, not touching and within the text, and is the rest of it unchanged?
bool is_kept(const string& text, const Edits& edits, const string& edited_text) {
    std::size_t at = 0;
    std::size_t at_edited = 0;
    for (const Edit& edit : edits) {
        const bool is_apart = edit.begin >= at && edit.begin <= edit.end && edit.end <= text.size();
        if (!is_apart) return false;
        const std::size_t kept = edit.begin - at;
        if (edited_text.compare(at_edited, kept, text, at, kept) != 0) return false;
        at_edited += kept;
        if (edited_text.compare(at_edited, edit.text.size(), edit.text) != 0) return false;
        at_edited += edit.text.size();
        at = edit.end;
    }
    return edited_text.substr(at_edited) == text.substr(at);
}

// Takes the first line, with its line end, off a text.
std::string_view take(std::string_view& text) {
    const std::size_t end = std::min(text.find('\n'), text.size() - 1) + 1;
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end);
    return line;
}

// The result of applying a diff as `patch` does; "broken" if the diff does not fit.
string patched(std::string_view text, std::string_view diff) {
    constexpr std::string_view open_end = "\\ No newline at end of file\n";
    string made;
    std::size_t line = 1;
    const auto keep_to = [&](std::size_t end) {
        for (; line < end && !text.empty(); ++line) made += take(text);
    };
    for (int i = 0; i < 2 && !diff.empty(); ++i) take(diff);
    while (!diff.empty()) {
        const string head(take(diff));
        if (head.starts_with("@@ -")) {
            const std::size_t first = std::stoul(head.substr(4));
            const bool is_empty = head.find(",0 +") != string::npos;
            keep_to(is_empty ? first + 1 : first);
            continue;
        }
        string content = head.substr(1);
        if (diff.starts_with(open_end)) {
            take(diff);
            content.pop_back();
        }
        if (head[0] != '+') {
            if (text.empty() || take(text) != content) return "broken";
            ++line;
        }
        if (head[0] != '-') made += content;
    }
    return made + string(text);
}

string broken_edits(const string& text, const Edits& edits, const string& wanted) {
    if (!is_kept(text, edits, wanted)) return "bytes outside of the edits are lost";
    if (patched(text, unified_diff("m", text, edits)) != wanted)
        return "the diff is wrong:\n" + unified_diff("m", text, edits);
    return {};
}

string broken_fixes(const Source& source, Confidence least) {
    Draft draft = begin_draft(source, check(source));
    const Choice choice = choose_fixes(draft.findings, least);
    string fault = broken_edits(source.bytes, choice.edits, edited(source.bytes, choice.edits));
    if (!fault.empty()) return fault;
    make_fixes(draft, least, check);
    return broken_edits(source.bytes, draft.revision.edits(), draft.source.bytes);
}

string broken_comments(const Source& source) {
    Draft draft = begin_draft(source, check(source));
    const std::size_t errors = error_count(draft.findings);
    const AddedComments added = comments_for(draft.source, draft.findings);
    revise(draft, added.edits, check);
    string fault = broken_edits(source.bytes, added.edits, draft.source.bytes);
    if (!fault.empty()) return fault;
    if (error_count(draft.findings) != errors) return "comments change the errors";
    const AddedComments more = comments_for(draft.source, draft.findings);
    return more.findings == 0 ? "" : "a comment does not allow what it is for";
}

}  // namespace

string broken(const string& text) {
    Source source;
    source.path = "m";
    source.bytes = text;
    parse_source(source);
    for (const Confidence least : {Confidence::certain, Confidence::maybe}) {
        if (string fault = broken_fixes(source, least); !fault.empty()) return fault;
    }
    return broken_comments(source);
}

}  // namespace fix_properties
