// Methods that begin and end the session, and those that report changes of the texts.
#include "frontend/server/lifecycle.h"

#include <algorithm>
#include <chrono>
#include <initializer_list>
#include <utility>

namespace orvex::frontend {

namespace {

// How long a text must be unchanged before it is given to the translator.
constexpr std::chrono::milliseconds pause{300};

constexpr int sync_incremental = 2;

// A member of nested objects, or nothing.
Json member(const Json& json, std::initializer_list<const char*> names) {
    Json value = json;
    for (const char* const name : names) {
        if (!value.is_object()) return {};
        Json next = value.value(name, Json());
        value = std::move(next);
    }
    return value;
}

bool says(const Json& abilities, std::initializer_list<const char*> names) {
    return member(abilities, names) == true;
}

Client client_of(const Json& abilities) {
    Client client;
    client.pulls_findings = member(abilities, {"textDocument", "diagnostic"}).is_object();
    client.refreshes_findings = says(abilities, {"workspace", "diagnostics", "refreshSupport"});
    client.links_definitions = says(abilities, {"textDocument", "definition", "linkSupport"});
    client.nests_symbols =
        says(abilities, {"textDocument", "documentSymbol", "hierarchicalDocumentSymbolSupport"});
    client.edits_by_version = says(abilities, {"workspace", "workspaceEdit", "documentChanges"});
    client.annotates_edits =
        member(abilities, {"workspace", "workspaceEdit", "changeAnnotationSupport"}).is_object();
    client.prepares_renaming = says(abilities, {"textDocument", "rename", "prepareSupport"});
    client.has_snippets =
        says(abilities, {"textDocument", "completion", "completionItem", "snippetSupport"});
    return client;
}

Units units_of(const Json& abilities) {
    const Json offered = member(abilities, {"general", "positionEncodings"});
    if (!offered.is_array()) return Units::utf16;
    const auto offers = [&](const char* name) {
        return std::find(offered.begin(), offered.end(), name) != offered.end();
    };
    if (offers("utf-8")) return Units::utf8;
    return offers("utf-32") ? Units::utf32 : Units::utf16;
}

const char* name_of(Units units) {
    switch (units) {
    case Units::utf8: return "utf-8";
    case Units::utf32: return "utf-32";
    case Units::utf16: break;
    }
    return "utf-16";
}

void add_folders(Server& server, const Json& params) {
    const Json folders = member(params, {"workspaceFolders"});
    if (folders.is_array()) {
        for (const Json& folder : folders)
            server.folders.push_back(path_of_uri(folder.at("uri").get<std::string>()));
    } else if (const Json root = member(params, {"rootUri"}); root.is_string()) {
        server.folders.push_back(path_of_uri(root.get<std::string>()));
    }
}

void mark_changed(Open& open) {
    open.is_checked = open.is_judged = open.is_shown = false;
    open.judge_at = Clock::now() + pause;
}

void apply_change(Document& document, const Json& change) {
    std::string text = change.at("text").get<std::string>();
    if (!change.contains("range")) return set_text(document, std::move(text));
    replace_text(document, range_in(document, change.at("range")), text);
}

}  // namespace

Json initialize(Server& server, const Json& params) {
    if (server.is_initialized)
        throw RequestError{invalid_request, "the server is already initialized"};
    const Json abilities = member(params, {"capabilities"});
    server.client = client_of(abilities);
    server.units = units_of(abilities);
    add_folders(server, params);
    server.is_initialized = true;
    Json provided = abilities_provided();
    provided["positionEncoding"] = name_of(server.units);
    provided["textDocumentSync"] = {{"openClose", true}, {"change", sync_incremental}};
    provided["renameProvider"] = true;
    if (server.client.prepares_renaming) provided["renameProvider"] = {{"prepareProvider", true}};
    if (server.client.pulls_findings) {
        provided["diagnosticProvider"] = {{"identifier", "orvex"},
                                          {"interFileDependencies", false},
                                          {"workspaceDiagnostics", true}};
    }
    return {{"capabilities", std::move(provided)},
            {"serverInfo", {{"name", "orvex"}, {"version", ORVEX_VERSION}}}};
}

Json ignore_notification(Server& /*server*/, const Json& /*params*/) { return {}; }

Json shut_down(Server& server, const Json& /*params*/) {
    server.is_shut_down = true;
    return nullptr;
}

Json exit_server(Server& server, const Json& /*params*/) {
    server.exit_status = server.is_shut_down ? 0 : 1;
    return {};
}

Json set_trace(Server& server, const Json& params) {
    const std::string value = params.at("value").get<std::string>();
    server.trace = value == "verbose"    ? Trace::verbose
                   : value == "messages" ? Trace::messages
                                         : Trace::off;
    return {};
}

Json did_open(Server& server, const Json& params) {
    const Json& item = params.at("textDocument");
    Open& open = server.open[item.at("uri").get<std::string>()];
    open = Open();
    open.document.uri = item.at("uri").get<std::string>();
    open.document.version = item.at("version").get<std::int64_t>();
    open.document.units = server.units;
    open.document.source.path = path_of_uri(open.document.uri);
    set_text(open.document, item.at("text").get<std::string>());
    mark_changed(open);
    return {};
}

Json did_change(Server& server, const Json& params) {
    const std::string uri = uri_in(params);
    const auto found = server.open.find(uri);
    if (found == server.open.end()) throw RequestError{invalid_params, "`" + uri + "` is not open"};
    Open& open = found->second;
    mark_changed(open);
    for (const Json& change : params.at("contentChanges")) apply_change(open.document, change);
    open.document.version = params.at("textDocument").at("version").get<std::int64_t>();
    return {};
}

Json did_close(Server& server, const Json& params) {
    const std::string uri = uri_in(params);
    if (server.open.erase(uri) == 0)
        throw RequestError{invalid_params, "`" + uri + "` is not open"};
    if (!server.client.pulls_findings) {
        server.send(notification("textDocument/publishDiagnostics",
                                 {{"uri", uri}, {"diagnostics", Json::array()}}));
    }
    return {};
}

}  // namespace orvex::frontend
