#include "frontend/server/types.h"

#include "frontend/base/bytes.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <nlohmann/json.hpp>
#include <system_error>
#include <utility>

namespace orvex::frontend {

namespace {

constexpr std::string_view file_scheme = "file://";

// The protocol's numbers.
constexpr int severity_error = 1;
constexpr int severity_warning = 2;
constexpr int severity_information = 3;
constexpr int tag_unnecessary = 1;

int severity_of(Severity severity) {
    switch (severity) {
    case Severity::error: return severity_error;
    case Severity::warning: return severity_warning;
    default: return severity_information;
    }
}

// Is this the code of findings about text without any effect?
bool is_unnecessary(std::string_view code) {
    constexpr std::array codes = {"name-unused", "nest-unused", "keyword-text-ignored",
                                  "text-ignored", "line-too-long"};
    return std::find(codes.begin(), codes.end(), code) != codes.end();
}

// A finding about the whole file is shown on its first line.
Range range_of_span(const Document& document, const Span& span) {
    const auto size = static_cast<Offset>(document.source.bytes.size());
    if (span.line == 0) return line_at(document, 0);
    return {std::min(static_cast<Offset>(span.begin), size),
            std::min(static_cast<Offset>(span.end), size)};
}

int hex_value(char c) {
    int value = 0;
    const auto [stop, error] = std::from_chars(&c, &c + 1, value, 16);
    return error == std::errc() && stop == &c + 1 ? value : -1;
}

}  // namespace

// An answer may have thousands of these. Building them from lists of pairs is several times slower.
Json json_of(Position position) {
    Json json;
    json["line"] = position.line;
    json["character"] = position.character;
    return json;
}

Json json_of(const Document& document, Range range) {
    Json json;
    json["start"] = json_of(position_at(document, range.begin));
    json["end"] = json_of(position_at(document, range.end));
    return json;
}

Json location_of(const Document& document, Range range) {
    Json json;
    json["uri"] = document.uri;
    json["range"] = json_of(document, range);
    return json;
}

Json workspace_edit(const Document& document, Json edits, bool by_version) {
    if (!by_version) return {{"changes", {{document.uri, std::move(edits)}}}};
    const Json text = {{"uri", document.uri}, {"version", document.version}};
    Json change = {{"textDocument", text}, {"edits", std::move(edits)}};
    return {{"documentChanges", Json::array({std::move(change)})}};
}

Json diagnostic_of(const Document& document, const Finding& finding) {
    std::string message = finding.message;
    Json related = Json::array();
    for (const Remark& remark : finding.remarks) {
        if (remark.severity == Severity::note && remark.span.path == document.source.path) {
            Json& note = related.emplace_back();
            note["location"] = location_of(document, range_of_span(document, remark.span));
            note["message"] = remark.message;
        } else {
            message += "\n" + severity_name(remark.severity) + ": " + remark.message;
        }
    }
    Json diagnostic;
    diagnostic["range"] = json_of(document, range_of_span(document, finding.span));
    diagnostic["severity"] = severity_of(finding.severity);
    diagnostic["code"] = finding.code;
    diagnostic["source"] = "orvex";
    diagnostic["message"] = std::move(message);
    if (!related.empty()) diagnostic["relatedInformation"] = std::move(related);
    if (is_unnecessary(finding.code)) diagnostic["tags"] = Json::array({tag_unnecessary});
    return diagnostic;
}

Position position_in(const Json& json) {
    return {json.at("line").get<std::uint32_t>(), json.at("character").get<std::uint32_t>()};
}

Offset offset_in(const Document& document, const Json& params) {
    return offset_at(document, position_in(params.at("position")));
}

Range range_in(const Document& document, const Json& json) {
    const Range range = {offset_at(document, position_in(json.at("start"))),
                         offset_at(document, position_in(json.at("end")))};
    if (range.end < range.begin)
        throw RequestError{invalid_params, "a range ends before it begins"};
    return range;
}

std::string uri_in(const Json& params) {
    return params.at("textDocument").at("uri").get<std::string>();
}

std::string path_of_uri(std::string_view uri) {
    if (!uri.starts_with(file_scheme)) return std::string(uri);
    uri.remove_prefix(file_scheme.size());
    std::string path;
    for (std::size_t at = 0; at < uri.size(); ++at) {
        const bool is_escaped = uri[at] == '%' && at + 2 < uri.size() &&
                                hex_value(uri[at + 1]) >= 0 && hex_value(uri[at + 2]) >= 0;
        if (is_escaped) {
            path += static_cast<char>(hex_value(uri[at + 1]) * 16 + hex_value(uri[at + 2]));
            at += 2;
        } else {
            path += uri[at];
        }
    }
    return path;
}

std::string uri_of_path(std::string_view path) {
    constexpr std::string_view kept =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";
    std::string uri(file_scheme);
    for (const char c : path) {
        if (kept.find(c) == std::string_view::npos) {
            append_percent(uri, c);
        } else {
            uri += c;
        }
    }
    return uri;
}

}  // namespace orvex::frontend
