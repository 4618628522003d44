#include "frontend/server/findings.h"

#include "frontend/abilities/document.h"
#include "frontend/findings/messages.h"
#include "frontend/fixes/choice.h"
#include "frontend/server/folders.h"
#include "frontend/session/check_file.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace orvex::frontend {

namespace {

constexpr const char* fix_all_kind = "source.fixAll.orvex";

// A client that has the findings of a text with this name need not get them again.
std::string name_of_text(const std::string& text, bool is_judged) {
    return std::to_string(std::hash<std::string>()(text)) + (is_judged ? "j" : "t");
}

Json report(const Document& document, const std::vector<Finding>& findings) {
    Json items = Json::array();
    for (const Finding& finding : findings) items.push_back(diagnostic_of(document, finding));
    return items;
}

// The full report of a text, or that the client already has it.
Json report_of(const Document& document, const std::vector<Finding>& findings,
               const std::string& name, const Json& known) {
    if (known == name) return {{"kind", "unchanged"}, {"resultId", name}};
    return {{"kind", "full"}, {"resultId", name}, {"items", report(document, findings)}};
}

void check(const Server& server, Open& open) {
    read_text(open.document);
    if (open.is_checked) return;
    open.findings = find_in_text(open.document.source, open.document.models, server.options);
    open.is_checked = true;
}

Json report_of_open(Server& server, Open& open, const Json& known) {
    check(server, open);
    const std::string name = name_of_text(open.document.source.bytes, open.is_judged);
    return report_of(open.document, open.findings, name, known);
}

// The result that the client already has for a text of the folders.
Json known_name(const Json& params, const std::string& uri) {
    for (const Json& known : params.value("previousResultIds", Json::array()))
        if (known.at("uri") == uri) return known.at("value");
    return {};
}

Json report_of_file(const Server& server, const Document& document, const Json& params) {
    const auto findings = find_in_text(document.source, document.models, server.options);
    Json item = report_of(document, findings, name_of_text(document.source.bytes, false),
                          known_name(params, document.uri));
    item["uri"] = document.uri;
    item["version"] = nullptr;
    return item;
}

bool touches(Range a, Range b) { return a.begin <= b.end && b.begin <= a.end; }

std::string title_of(const Finding& finding) {
    for (const Remark& remark : finding.remarks)
        if (remark.severity == Severity::help) return remark.message;
    return finding.message;
}

Json edit_of(const Server& server, const Document& document, const std::vector<Edit>& edits) {
    Json list = Json::array();
    for (const Edit& edit : edits) {
        const Range range = {static_cast<Offset>(edit.begin), static_cast<Offset>(edit.end)};
        list.push_back({{"range", json_of(document, range)}, {"newText", edit.text}});
    }
    return workspace_edit(document, std::move(list), server.client.edits_by_version);
}

Json quick_fix(const Server& server, const Document& document, const Finding& finding) {
    return {{"title", title_of(finding)},
            {"kind", "quickfix"},
            {"diagnostics", Json::array({diagnostic_of(document, finding)})},
            {"isPreferred", finding.fix->confidence == Confidence::certain},
            {"edit", edit_of(server, document, finding.fix->edits)}};
}

// All certain fixes that can be made at the same time.
Json fix_all(const Server& server, const Document& document, const Choice& choice) {
    const std::string count =
        std::to_string(choice.fixes) + (choice.fixes == 1 ? " fix" : " fixes");
    return {{"title", "make all safe fixes (" + count + ")"},
            {"kind", fix_all_kind},
            {"edit", edit_of(server, document, choice.edits)}};
}

// Is this one of the kinds of actions that the client asks for?
bool is_wanted(const Json& context, std::string_view kind) {
    const Json only = context.value("only", Json());
    if (!only.is_array()) return true;
    return std::any_of(only.begin(), only.end(), [&](const Json& wanted) {
        const std::string name = wanted.get<std::string>();
        return kind == name || kind.starts_with(name + ".");
    });
}

}  // namespace

Json findings_of_text(Server& server, const Json& params) {
    return report_of_open(server, open_text(server, params),
                          params.value("previousResultId", Json()));
}

Json findings_of_folders(Server& server, const Json& params) {
    Json items = Json::array();
    each_closed_text(server, [&](const Document& document) {
        items.push_back(report_of_file(server, document, params));
    });
    for (auto& [uri, open] : server.open) {
        Json item = report_of_open(server, open, known_name(params, uri));
        item["uri"] = uri;
        item["version"] = open.document.version;
        items.push_back(std::move(item));
    }
    return {{"items", std::move(items)}};
}

Json code_actions(Server& server, const Json& params) {
    Open& open = open_text(server, params);
    const Json& context = params.at("context");
    const Range range = range_in(open.document, params.at("range"));
    Json actions = Json::array();
    check(server, open);
    for (const Finding& finding : open.findings) {
        const Range place = {static_cast<Offset>(finding.span.begin),
                             static_cast<Offset>(finding.span.end)};
        if (finding.fix && touches(place, range) && is_wanted(context, "quickfix"))
            actions.push_back(quick_fix(server, open.document, finding));
    }
    const Choice certain = choose_fixes(open.findings, Confidence::certain);
    if (certain.fixes > 0 && is_wanted(context, fix_all_kind))
        actions.push_back(fix_all(server, open.document, certain));
    return actions;
}

Json explanation(Server& /*server*/, const Json& params) {
    const std::string code = params.at("code").get<std::string>();
    const MessageEntry* const entry = find_code(code);
    if (entry == nullptr) throw RequestError{invalid_params, "unknown code `" + code + "`"};
    return {{"kind", "markdown"}, {"value", entry->text}};
}

}  // namespace orvex::frontend
