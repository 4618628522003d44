// The methods of the protocol that the server knows.
#include "frontend/server/lifecycle.h"
#include "frontend/server/server.h"

#include <algorithm>
#include <iterator>

namespace orvex::frontend {

namespace {

constexpr Method methods[] = {
    {"initialize", true, initialize},
    {"initialized", false, ignore_notification},
    {"shutdown", true, shut_down},
    {"exit", false, exit_server},
    {"$/setTrace", false, set_trace},
    {"textDocument/didOpen", false, did_open},
    {"textDocument/didChange", false, did_change},
    {"textDocument/didClose", false, did_close},
    {"textDocument/didSave", false, ignore_notification},
};

}  // namespace

const Method* find_method(std::string_view name) {
    const auto* const found =
        std::find_if(std::begin(methods), std::end(methods),
                     [&](const Method& method) { return method.name == name; });
    return found == std::end(methods) ? nullptr : found;
}

Json abilities_provided() { return Json::object(); }

}  // namespace orvex::frontend
