#include "frontend/session/check_file.h"

#include "frontend/cli/levels.h"
#include "frontend/findings/failure.h"
#include "frontend/findings/messages.h"
#include "frontend/findings/place.h"
#include "frontend/findings/wording.h"
#include "frontend/model/build.h"
#include "frontend/rules/allow.h"
#include "frontend/rules/errors.h"
#include "frontend/rules/host_text.h"
#include "frontend/rules/rule.h"
#include "frontend/rules/selection.h"

#include <algorithm>
#include <cstddef>
#include <future>
#include <iterator>
#include <span>
#include <utility>

namespace orvex::frontend {

namespace {

// The findings in the models of a file.
struct Findings {
    std::vector<Expectation> expectations;
    std::vector<std::vector<Finding>> errors;  // of each model
    std::vector<Finding> warnings;
};

void check_model(const Source& source, const HostText& host, const Model& model, Findings& found) {
    found.expectations.push_back(expectation_of(model));
    add_errors(source, model, found.errors.emplace_back());
    run_model_rules(source, host, model, found.warnings);
}

Findings check_built_models(const Source& source, const std::vector<Model>& models) {
    Findings found;
    const HostText host = read_host_text(source);
    for (const Model& model : models) check_model(source, host, model, found);
    run_file_rules(source, found.warnings);
    return found;
}

// Builds the selected models in order, and checks each. A model without an error passes on whether
// its last fields belong to a block's opening record.
Findings check_models(const Source& source, const Selection& selection, bool keeps_models,
                      std::vector<Model>& models) {
    Findings found;
    const HostText host = read_host_text(source);
    bool opening_is_open = false;
    for (const Index index : selection.models) {
        Model model = build_model(source.bytes, source.tree, index, opening_is_open);
        if (model.errors.empty()) opening_is_open = model.opening_is_open;
        check_model(source, host, model, found);
        if (keeps_models) models.push_back(std::move(model));
    }
    run_file_rules(source, found.warnings);
    return found;
}

// The file's name without its folder, and with the extension of the file that the host's program
// writes.
std::string usual_put_file(const std::string& path) {
    std::string name = path.substr(path.rfind('/') + 1);
    if (path == "<stdin>") name = "stdin";
    if (const std::size_t dot = name.rfind('.'); dot != std::string::npos && dot > 0)
        name.resize(dot);
    return name + ".scr";
}

// Why a path cannot be a line of the control file; empty if it can.
std::string fault_of_line(const std::string& path) {
    if (path.find_first_of("\n\r") != std::string::npos) return "it contains a line end";
    if (path.size() > longest_setting)
        return "it is longer than " + std::to_string(longest_setting) + " characters";
    return {};
}

// Can the name of the put file be made from that of the file, if the options give none? If not,
// adds a finding.
bool has_put_file(const Source& source, const Options& options, Checked& checked) {
    if (!options.put_file.empty()) return true;
    const std::string reason = fault_of_line(usual_put_file(source.path));
    if (reason.empty()) return true;
    checked.findings.push_back(failure("file-name-unusable",
                                       {{"path", source.path}, {"reason", reason}},
                                       whole_file(source.path)));
    return false;
}

RunSettings settings_of(const Source& source, const Options& options, Wanted wanted) {
    return {options.put_file.empty() ? usual_put_file(source.path) : options.put_file,
            options.time,
            options.first_model,
            options.first_constraint,
            wanted.outputs,
            wanted.stop};
}

bool has_finding(const Checked& checked, const std::string& message) {
    return std::any_of(checked.findings.begin(), checked.findings.end(),
                       [&](const Finding& finding) { return finding.message == message; });
}

// What the system prevented the translator from doing. It reads and writes only files in the
// temporary folder.
Finding system_failure(const Source& source, const TempDir& place, const Recognised& known) {
    const std::string& code = known.entry->code;
    const Span span = whole_file(source.path);
    const auto reason = known.values.find("reason");
    if ((code != "read-failed" && code != "write-failed") || reason == known.values.end())
        return failure(code, known.values, span);
    return failure("temporary-folder-unusable",
                   {{"path", place.parent()}, {"reason", reason->second}}, span);
}

void add_system_messages(const Source& source, const TempDir& place, const Verdict& verdict,
                         Checked& checked) {
    bool explained = false;
    for (const std::string& line : verdict.messages) {
        const auto known = recognise(line);
        if (!known) continue;
        explained = true;
        Finding finding = system_failure(source, place, *known);
        if (!has_finding(checked, finding.message)) checked.findings.push_back(std::move(finding));
    }
    if (verdict.cause.empty() || explained) return;
    checked.findings.push_back(
        failure("result-unknown", {{"reason", verdict.cause}}, whole_file(source.path)));
}

// Adds findings about stops that the tree does not explain.
void add_stops(const Source& source, const Verdict& verdict, Checked& checked) {
    for (const UnknownStop& stop : verdict.stops) {
        checked.findings.push_back(failure("translator-disagrees",
                                           {{"message", plain_words(stop.message)}},
                                           record_span(source, stop.line)));
    }
}

// If the translator accepts a model, its errors become warnings.
void soften(std::vector<Finding>& errors) {
    for (Finding& error : errors) {
        error =
            warning("translator-disagrees", {{"message", error.message}}, error.span, "accepted");
    }
}

void move_to(std::vector<Finding>& findings, std::vector<Finding>& from) {
    findings.insert(findings.end(), std::make_move_iterator(from.begin()),
                    std::make_move_iterator(from.end()));
}

void add_model_errors(const Verdict& verdict, Findings& found, Checked& checked) {
    for (std::size_t i = 0; i < found.errors.size(); ++i) {
        const auto& accepted = verdict.accepted;
        const bool is_accepted = std::find(accepted.begin(), accepted.end(),
                                           found.expectations[i].model) != accepted.end();
        if (is_accepted) soften(found.errors[i]);
        move_to(checked.findings, found.errors[i]);
    }
}

// Were the rules checked where a comment applies? They are silent about models that have errors or
// are not selected.
class Judged {
  public:
    Judged(const Source& source, const Selection& selection, const Findings& found)
        : tree_(source.tree), is_judged_(source.models.size()) {
        for (std::size_t i = 0; i < found.errors.size(); ++i)
            is_judged_[selection.models[i]] = found.errors[i].empty();
        is_whole_ = std::find(is_judged_.begin(), is_judged_.end(), false) == is_judged_.end();
    }

    bool covers(const Allowance& allowance) const {
        if (allowance.reach == Reach::file) return is_whole_;
        const auto models = std::span(tree_.models).first(is_judged_.size());
        const auto after =
            std::upper_bound(models.begin(), models.end(), allowance.first,
                             [](Index at, const ModelNode& model) { return at < model.record; });
        if (after == models.begin() || allowance.first >= (after - 1)->end) return true;
        return is_judged_[static_cast<std::size_t>(after - models.begin()) - 1];
    }

  private:
    const Tree& tree_;
    std::vector<bool> is_judged_;  // for each model
    bool is_whole_ = false;
};

// Removes the findings that comments allow, and finds the comments that allow nothing.
void apply_allowances(const Source& source, const Options& options, const Judged& judged,
                      std::vector<Finding>& findings) {
    std::vector<Allowance> allowances = read_allowances(source);
    if (allowances.empty()) return;
    remove_allowed(allowances, findings);
    const auto is_judged = [&](const Allowance& allowance) {
        const Rule* const rule = allowable_rule(allowance.code);
        return !is_off(options, allowance.code, rule->level) && judged.covers(allowance);
    };
    add_unused_allowances(source, allowances, is_judged, findings);
}

void order_by_place(std::vector<Finding>& findings) {
    std::stable_sort(findings.begin(), findings.end(),
                     [](const Finding& a, const Finding& b) { return a.span.line < b.span.line; });
}

// Applies the comments in the file and the options to its findings, and sorts them.
void settle(const Source& source, const Options& options, const Judged& judged,
            std::vector<Finding>& findings) {
    apply_allowances(source, options, judged, findings);
    apply_levels(options, findings);
    order_by_place(findings);
    for (Finding& finding : findings) {
        if (finding.fix) place_fix(source, *finding.fix);
    }
}

}  // namespace

std::vector<Finding> find_in_text(const Source& source, const std::vector<Model>& built,
                                  const Options& options) {
    std::vector<Finding> findings;
    std::vector<Model> none;
    const Selection selection = select_models(source, options.model, findings);
    // A model that is left out passes nothing on to the next.
    const bool takes_all = selection.models.size() == built.size();
    Findings found = takes_all ? check_built_models(source, built)
                               : check_models(source, selection, false, none);
    const Judged judged(source, selection, found);
    for (std::vector<Finding>& errors : found.errors) move_to(findings, errors);
    move_to(findings, found.warnings);
    settle(source, options, judged, findings);
    return findings;
}

Checked check_text(const Source& source, const Options& options) {
    Checked checked;
    checked.models = build_models(source.bytes, source.tree);
    checked.findings = find_in_text(source, checked.models, options);
    return checked;
}

Checked check_file(const Source& source, const Options& options, Wanted wanted,
                   const std::string& program, const TempDir& place) {
    Checked checked;
    if (!has_put_file(source, options, checked)) return checked;
    const Selection selection = select_models(source, options.model, checked.findings);
    const Court court{source, selection.models, program, place,
                      settings_of(source, options, wanted)};
    std::future<RunResult> run = start_judging(court);
    Findings found = check_models(source, selection, wanted.models, checked.models);
    const Judged judged(source, selection, found);
    Verdict verdict = judge(court, found.expectations, std::move(run));
    add_system_messages(source, place, verdict, checked);
    add_model_errors(verdict, found, checked);
    add_stops(source, verdict, checked);
    move_to(checked.findings, found.warnings);
    settle(source, options, judged, checked.findings);
    checked.outputs = std::move(verdict.outputs);
    checked.later_outputs = std::move(verdict.later_outputs);
    return checked;
}

}  // namespace orvex::frontend
