#include "frontend/server/server.h"

#include "frontend/session/check_file.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace orvex::frontend {

namespace {

bool is_request(const Json& message) { return message.contains("id"); }

Json id_of(const Json& message) { return message.value("id", Json()); }

std::string method_of(const Json& message) { return message.at("method").get<std::string>(); }

// Throws unless a message is one that this server can work on, or an answer.
void expect_form(const Json& message) {
    if (!message.is_object() || message.value("jsonrpc", Json()) != "2.0")
        throw RequestError{invalid_request, "a message is not JSON-RPC 2.0"};
    const bool is_answer = message.contains("result") || message.contains("error");
    const Json method = message.value("method", Json());
    if (!is_answer && !method.is_string())
        throw RequestError{invalid_request, "a message has no method"};
    const Json params = message.value("params", Json::object());
    if (!params.is_structured() && !params.is_null())
        throw RequestError{invalid_request, "the parameters are neither an object nor a list"};
}

void cancel(Server& server, const Json& params) {
    const Json id = params.is_object() ? params.value("id", Json()) : Json();
    const auto found = std::find_if(
        server.queue.begin(), server.queue.end(),
        [&](const Json& message) { return is_request(message) && id_of(message) == id; });
    if (found == server.queue.end()) return;
    server.queue.erase(found);
    server.send(error_answer_to(id, {request_cancelled, "the request was cancelled"}));
}

// Before initialization a server accepts only that request, and after shutdown none. `exit` is
// always accepted.
void expect_state(const Server& server, std::string_view method) {
    if (method == "exit") return;
    if (!server.is_initialized && method != "initialize")
        throw RequestError{server_not_initialized, "the server is not initialized"};
    if (server.is_shut_down) throw RequestError{invalid_request, "the server is shut down"};
}

// Reports the message being processed to a client that traces the server.
void trace(Server& server, const std::string& name, const Json& message) {
    if (server.trace == Trace::off) return;
    Json params = {{"message", name}};
    if (server.trace == Trace::verbose)
        params["verbose"] =
            message.value("params", Json()).dump(-1, ' ', false, Json::error_handler_t::replace);
    server.send(notification("$/logTrace", std::move(params)));
}

Json work(Server& server, const Json& message) {
    const std::string name = method_of(message);
    trace(server, name, message);
    expect_state(server, name);
    const Method* const method = find_method(name);
    if (method == nullptr || method->has_answer != is_request(message))
        throw RequestError{method_not_found, "unknown method `" + name + "`"};
    try {
        return method->work(server, message.value("params", Json::object()));
    } catch (const Json::exception& error) {
        throw RequestError{invalid_params, error.what()};
    }
}

void answer(Server& server, const Json& message) {
    const Json id = id_of(message);
    try {
        Json result = work(server, message);
        if (is_request(message)) server.send(answer_to(id, std::move(result)));
    } catch (const RequestError& error) {
        if (is_request(message)) server.send(error_answer_to(id, error));
        server.log(error.message);
    } catch (const std::exception& error) {
        if (is_request(message)) server.send(error_answer_to(id, {internal_error, error.what()}));
        server.log(error.what());
    }
}

void check(Server& server, Open& open) {
    read_text(open.document);
    open.findings = find_in_text(open.document.source, open.document.models, server.options);
    open.is_checked = true;
}

void publish(Server& server, const Open& open) {
    Json list = Json::array();
    for (const Finding& finding : open.findings)
        list.push_back(diagnostic_of(open.document, finding));
    server.send(
        notification("textDocument/publishDiagnostics", {{"uri", open.document.uri},
                                                         {"version", open.document.version},
                                                         {"diagnostics", std::move(list)}}));
}

}  // namespace

void take_message(Server& server, const std::string& text) {
    Json message = Json::parse(text, nullptr, false);
    if (message.is_discarded())
        return server.send(error_answer_to(nullptr, {parse_error, "a message is not JSON"}));
    try {
        expect_form(message);
    } catch (const RequestError& error) {
        const Json id = message.is_object() ? id_of(message) : Json();
        return server.send(error_answer_to(id, error));
    }
    if (!message.contains("method")) return;  // an answer of the client
    if (method_of(message) == "$/cancelRequest")
        return cancel(server, message.value("params", Json()));
    server.queue.push_back(std::move(message));
}

void work_on_message(Server& server) {
    const Json message = std::move(server.queue.front());
    server.queue.pop_front();
    answer(server, message);
}

Open& open_text(Server& server, const Json& params) {
    const std::string uri = uri_in(params);
    const auto found = server.open.find(uri);
    if (found == server.open.end()) throw RequestError{invalid_params, "`" + uri + "` is not open"};
    read_text(found->second.document);
    return found->second;
}

void show_changed(Server& server) {
    for (auto& [uri, open] : server.open) {
        if (!open.is_checked) check(server, open);
        if (open.is_shown || server.client.pulls_findings) continue;
        publish(server, open);
        open.is_shown = true;
    }
}

void take_verdict(Server& server, const std::string& uri, std::int64_t version,
                  std::vector<Finding> findings) {
    const auto found = server.open.find(uri);
    if (found == server.open.end() || found->second.document.version != version) return;
    Open& open = found->second;
    open.findings = std::move(findings);
    open.is_checked = true;
    open.is_judged = true;
    open.is_shown = false;
    if (server.client.pulls_findings && server.client.refreshes_findings)
        server.send(request(server.next_id++, "workspace/diagnostic/refresh", nullptr));
}

}  // namespace orvex::frontend
