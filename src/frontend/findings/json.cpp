#include "frontend/findings/json.h"

#include "frontend/base/bytes.h"
#include "frontend/findings/messages.h"
#include "frontend/findings/wording.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <string_view>
#include <system_error>
#include <vector>

namespace orvex::frontend {

namespace {

using Json = nlohmann::ordered_json;

std::string dumped(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

// JSON lines.

// A list with one span or none. The whole file is shown as the start of its first line.
Json spans_of(const Span& span, bool primary) {
    Json spans = Json::array();
    if (span.path.empty()) return spans;
    const int line = std::max(span.line, 1);
    spans.push_back({{"path", span.path},
                     {"line", line},
                     {"column", span.column},
                     {"end_line", line},
                     {"end_column", span.end_column},
                     {"byte_start", span.begin},
                     {"byte_end", span.end},
                     {"primary", primary},
                     {"text", span.text}});
    return spans;
}

Json statistics(const std::vector<CodeCount>& counts) {
    Json list = Json::array();
    for (const CodeCount& row : counts) {
        list.push_back(
            {{"code", row.code}, {"severity", severity_name(row.severity)}, {"count", row.count}});
    }
    return list;
}

Json fix_of(const Fix& fix) {
    Json edits = Json::array();
    for (const Edit& edit : fix.edits) {
        edits.push_back({{"line", edit.line},
                         {"column", edit.column},
                         {"end_line", edit.end_line},
                         {"end_column", edit.end_column},
                         {"byte_start", edit.begin},
                         {"byte_end", edit.end},
                         {"text", edit.text}});
    }
    return {{"confidence", confidence_name(fix.confidence)}, {"edits", edits}};
}

// SARIF.

// A message object. In its text {0} is a placeholder for an argument, and [a](b) is a link, so
// braces are doubled and brackets get a backslash.
Json message_of(std::string_view text) {
    std::string escaped;
    std::size_t backslashes = 0;
    for (const char c : text) {
        if (c == '[' || c == ']') escaped.append(backslashes + 1, '\\');
        if (c == '{' || c == '}') escaped += c;
        escaped += c;
        backslashes = c == '\\' ? backslashes + 1 : 0;
    }
    return {{"text", escaped}};
}

// A byte of a path in a URI.
void append_encoded(std::string& uri, char c) {
    constexpr std::string_view kept =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";
    if (kept.find(c) == std::string_view::npos) {
        append_percent(uri, c);
    } else {
        uri += c;
    }
}

// The path relative to the current folder if it is inside that: viewers of reports reject other
// paths.
std::string relative_path(const std::string& path) {
    std::error_code none;
    std::string folder = path.starts_with('/') ? std::filesystem::current_path(none).string() : ".";
    if (!folder.ends_with('/')) folder += '/';
    return path.starts_with(folder) ? path.substr(folder.size()) : path;
}

// A finding without a path is about the run and gets the current folder, since each result needs a
// place.
std::string uri_of(const std::string& path) {
    const std::string relative = relative_path(path);
    std::string uri = relative.starts_with('/') ? "file://" : "";
    for (const char c : relative) append_encoded(uri, c);
    return uri.empty() ? "." : uri;
}

Json location_of(const Span& span) {
    Json region = {{"startLine", std::max(span.line, 1)}};
    if (span.line > 0) {
        region["startColumn"] = span.column;
        region["endColumn"] = std::max(span.end_column, span.column);
    }
    return {{"physicalLocation",
             {{"artifactLocation", {{"uri", uri_of(span.path)}}}, {"region", region}}}};
}

// The help text also describes the fix.
Json fixes_of(const Finding& finding) {
    Json replacements = Json::array();
    for (const Edit& edit : finding.fix->edits) {
        replacements.push_back({{"deletedRegion",
                                 {{"startLine", edit.line},
                                  {"startColumn", edit.column},
                                  {"endLine", edit.end_line},
                                  {"endColumn", edit.end_column}}},
                                {"insertedContent", {{"text", edit.text}}}});
    }
    Json fix = {{"artifactChanges",
                 Json::array({{{"artifactLocation", {{"uri", uri_of(finding.span.path)}}},
                               {"replacements", replacements}}})},
                {"properties", {{"confidence", confidence_name(finding.fix->confidence)}}}};
    for (const Remark& remark : finding.remarks) {
        if (remark.severity == Severity::help) fix["description"] = message_of(remark.message);
    }
    return Json::array({fix});
}

// A number that stays the same when the finding moves to another line of its file (64 bits,
// FNV-1a).
std::string fingerprint(const Finding& finding) {
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (const std::string& part :
         {finding.code, relative_path(finding.span.path), finding.span.text}) {
        for (const char c : part + '\n') {
            hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3U;
        }
    }
    std::string text;
    for (unsigned shift = 64; shift > 0; shift -= 4) {
        text += "0123456789abcdef"[(hash >> (shift - 4)) & 15U];
    }
    return text;
}

std::string sarif_level(Severity severity) {
    return severity <= Severity::help ? "note" : severity_name(severity);
}

Json rules() {
    Json list = Json::array();
    for (const MessageEntry& entry : message_index()) {
        list.push_back({{"id", entry.code},
                        {"shortDescription", message_of(title(entry))},
                        {"fullDescription", message_of(entry.cause)},
                        {"help", message_of(entry.cure)},
                        {"defaultConfiguration", {{"level", sarif_level(level_of(entry))}}}});
    }
    return list;
}

}  // namespace

std::string json_finding(const Finding& finding) {
    Json json = {{"version", 2},
                 {"type", "finding"},
                 {"severity", severity_name(finding.severity)},
                 {"code", finding.code},
                 {"message", finding.message},
                 {"spans", spans_of(finding.span, true)},
                 {"children", Json::array()}};
    for (const Remark& remark : finding.remarks) {
        json["children"].push_back({{"severity", severity_name(remark.severity)},
                                    {"message", remark.message},
                                    {"spans", spans_of(remark.span, false)}});
    }
    if (finding.fix) json["fix"] = fix_of(*finding.fix);
    json["rendered"] = rendered(finding, false);
    return dumped(json) + '\n';
}

std::string json_summary(const Summary& summary) {
    Json json = {{"version", 2},
                 {"type", "summary"},
                 {"files", summary.files},
                 {"errors", summary.errors},
                 {"warnings", summary.warnings},
                 {"more", summary.hidden > 0},
                 {"hidden", summary.hidden},
                 {"status", summary.status}};
    if (summary.outputs) {
        json["written"] = summary.outputs->written;
        json["unchanged"] = summary.outputs->unchanged;
    }
    if (summary.statistics) json["statistics"] = statistics(*summary.statistics);
    return dumped(json) + '\n';
}

std::string sarif_head() {
    const Json driver = {{"name", "orvex"},
                         {"version", ORVEX_VERSION},
                         {"semanticVersion", ORVEX_VERSION},
                         {"informationUri", ORVEX_HOMEPAGE},
                         {"rules", rules()}};
    return "{\"$schema\":\"https://docs.oasis-open.org/sarif/sarif/v2.1.0/errata01/os/schemas/"
           "sarif-schema-2.1.0.json\",\n\"version\":\"2.1.0\",\n\"runs\":[{\"tool\":{\"driver\":" +
           dumped(driver) + "},\n\"columnKind\":\"unicodeCodePoints\",\n\"results\":[\n";
}

std::string sarif_finding(const Finding& finding, bool first) {
    std::string message = finding.message;
    Json related = Json::array();
    for (const Remark& remark : finding.remarks) {
        if (remark.span.path.empty()) {
            message += '\n' + severity_name(remark.severity) + ": " + remark.message;
            continue;
        }
        Json location = location_of(remark.span);
        location["message"] = message_of(remark.message);
        related.push_back(location);
    }
    Json json = {{"ruleId", finding.code}};
    const std::vector<MessageEntry>& index = message_index();
    if (const MessageEntry* entry = find_code(finding.code)) {
        json["ruleIndex"] = entry - index.data();
    }
    json["level"] = sarif_level(finding.severity);
    json["message"] = message_of(message);
    json["locations"] = Json::array({location_of(finding.span)});
    if (!related.empty()) json["relatedLocations"] = related;
    if (finding.fix) json["fixes"] = fixes_of(finding);
    json["partialFingerprints"] = {{"orvexLine/v1", fingerprint(finding)}};
    return (first ? "" : ",\n") + dumped(json);
}

std::string sarif_tail(const Summary& summary) {
    Json invocation = {{"executionSuccessful", summary.status < 2}, {"exitCode", summary.status}};
    if (summary.hidden > 0) {
        invocation["toolExecutionNotifications"] =
            Json::array({{{"level", "warning"}, {"message", message_of(more_errors)}}});
    }
    return "\n],\n\"invocations\":[" + dumped(invocation) + "]}]}\n";
}

}  // namespace orvex::frontend
