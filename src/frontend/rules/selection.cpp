#include "frontend/rules/selection.h"

#include "frontend/base/bytes.h"
#include "frontend/base/spelling.h"
#include "frontend/findings/failure.h"
#include "frontend/findings/place.h"
#include "frontend/findings/wording.h"

#include <algorithm>
#include <map>
#include <string_view>

namespace orvex::frontend {

namespace {

bool is_file_name(const std::string& name) {
    return !name.empty() && name.find_first_of(std::string_view("/\0", 2)) == std::string::npos;
}

// Can a model's outputs be named after it? If not, adds a finding. `lines` has the lines of earlier
// names.
bool accept_name(const Source& source, const ModelText& model, std::map<std::string, int>& lines,
                 std::vector<Finding>& findings) {
    const Span span = record_span(source, model.line);
    if (!is_file_name(model.name)) {
        findings.push_back(failure("model-name-unusable", {{"name", model.name}}, span));
        return false;
    }
    const auto [first, is_new] = lines.emplace(model.name, model.line);
    if (is_new) return true;
    Finding finding = failure("model-repeated", {{"name", model.name}}, span);
    finding.remarks.insert(finding.remarks.begin(), {Severity::note, "the first one is here",
                                                     record_span(source, first->second)});
    findings.push_back(std::move(finding));
    return false;
}

void refuse_wanted(const Source& source, const std::string& wanted,
                   std::vector<Finding>& findings) {
    std::vector<std::string> names;
    for (const ModelText& model : source.models) names.push_back(model.name);
    Finding finding = failure("model-unknown", {{"name", wanted}}, whole_file(source.path));
    std::string in_capitals = wanted;
    make_upper(in_capitals);
    if (const std::string near = nearest(in_capitals, names); !near.empty())
        set_help(finding, "did you mean " + back_quoted(near) + "?");
    findings.push_back(std::move(finding));
}

}  // namespace

Selection select_models(const Source& source, const std::string& wanted,
                        std::vector<Finding>& findings) {
    Selection selection;
    std::string name = wanted;
    make_upper(name);
    std::map<std::string, int> lines;
    bool found = name.empty();
    for (Index model = 0; model < source.models.size(); ++model) {
        const ModelText& text = source.models[model];
        const bool asked = name.empty() || name == text.name;
        found = found || asked;
        const bool taken = asked && accept_name(source, text, lines, findings);
        selection.skipped.push_back(!taken);
        if (taken) selection.models.push_back(model);
    }
    if (!found) refuse_wanted(source, wanted, findings);
    return selection;
}

}  // namespace orvex::frontend
