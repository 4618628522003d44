#include "frontend/server/self_check.h"

#include "frontend/base/files.h"
#include "frontend/base/streams.h"
#include "frontend/server/server.h"
#include "frontend/syntax/parse.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <new>
#include <string>
#include <utility>
#include <vector>

namespace orvex::frontend {

namespace {

constexpr std::array questions_at_places = {"textDocument/hover",
                                            "textDocument/completion",
                                            "textDocument/signatureHelp",
                                            "textDocument/declaration",
                                            "textDocument/definition",
                                            "textDocument/references",
                                            "textDocument/documentHighlight",
                                            "textDocument/onTypeFormatting",
                                            "textDocument/prepareRename"};

constexpr std::array questions_about_texts = {
    "textDocument/diagnostic", "textDocument/documentSymbol", "textDocument/foldingRange",
    "textDocument/codeLens",   "textDocument/documentLink",   "textDocument/semanticTokens/full",
    "textDocument/formatting"};

constexpr std::array questions_about_ranges = {
    "textDocument/inlayHint", "textDocument/semanticTokens/range", "textDocument/codeAction",
    "textDocument/rangeFormatting"};

bool is_inside(const Document& document, Position position) {
    if (position.line >= document.lines.size()) return false;
    const Offset end = line_at(document, position.line).end;
    return position.character <= position_at(document, end).character;
}

// A client that sends requests and checks the answers.
class Asker {
  public:
    Asker(const Options& options, const std::string& path, std::string text,
          const std::function<void(const std::string&)>& fail)
        : fail_(fail),
          server_{options, [this](const Json& message) { take(message); }, [](std::string_view) {}},
          uri_(uri_of_path(path)) {
        set_text(document_, text);
        read_text(document_);
        ask("initialize", {{"capabilities", {{"textDocument", {{"diagnostic", Json::object()}}}}}});
        tell("textDocument/didOpen",
             {{"textDocument",
               {{"uri", uri_}, {"languageId", "orvex"}, {"version", 1}, {"text", text}}}});
    }

    std::size_t ask_all() {
        for (const char* const method : questions_about_texts) ask(method, about_text());
        const Json all = range_json({0, static_cast<Offset>(document_.source.bytes.size())});
        for (const char* const method : questions_about_ranges) ask(method, about_range(all));
        const Tree& tree = document_.source.tree;
        for (Index token = 0; token + 1 < tree.tokens.size(); ++token)
            ask_at(range_of(tree, token));
        return count_;
    }

  private:
    void ask_at(Range token) {
        for (const Offset offset : {token.begin, (token.begin + token.end) / 2}) {
            for (const char* const method : questions_at_places) ask(method, about(offset));
            compare_definition(offset);
            Json selection = about_text();
            selection["positions"] = Json::array({json_of(position_at(document_, offset))});
            ask("textDocument/selectionRange", selection);
        }
        ask("textDocument/codeAction", about_range(range_json(token)));
    }

    Json about_text() const { return {{"textDocument", {{"uri", uri_}}}}; }

    Json about(Offset offset) const {
        Json params = about_text();
        params["position"] = json_of(position_at(document_, offset));
        params["context"] = {{"includeDeclaration", true}};
        return params;
    }

    Json about_range(const Json& range) const {
        Json params = about_text();
        params["range"] = range;
        params["context"] = {{"diagnostics", Json::array()}};
        return params;
    }

    Json range_json(Range range) const { return json_of(document_, range); }

    void compare_definition(Offset offset) {
        const Json definitions = ask("textDocument/definition", about(offset));
        const Json references = ask("textDocument/references", about(offset));
        if (!definitions.is_array() || !references.is_array()) return;
        for (const Json& definition : definitions) {
            const Json place = {
                {"uri", definition.value("uri", definition.value("targetUri", ""))},
                {"range",
                 definition.value("range", definition.value("targetSelectionRange", Json()))}};
            if (std::find(references.begin(), references.end(), place) == references.end())
                complain("textDocument/definition", about(offset), "is not among the references");
        }
    }

    void complain(const std::string& method, const Json& params, const std::string& what) const {
        const Json position = params.value("position", params.value("range", Json()));
        fail_(method + " " + position.dump() + ": " + what);
    }

    void tell(const char* method, Json params) {
        take_message(server_, notification(method, std::move(params)).dump());
        while (!server_.queue.empty()) work_on_message(server_);
    }

    Json ask(const char* method, const Json& params) {
        answer_ = Json();
        ++count_;
        take_message(server_, request(static_cast<std::int64_t>(count_), method, params).dump());
        while (!server_.queue.empty()) work_on_message(server_);
        if (answer_.contains("error")) {
            const bool is_refusal = answer_["error"]["code"] == request_failed;
            if (!is_refusal) complain(method, params, answer_["error"]["message"]);
            return {};
        }
        Json result = answer_.value("result", Json());
        const std::string place = place_outside(document_, result);
        if (!place.empty())
            complain(method, params, "answers with " + place + ", which is outside the text");
        return result;
    }

    void take(const Json& message) {
        if (message.contains("id")) answer_ = message;
    }

    const std::function<void(const std::string&)>& fail_;
    Server server_;
    std::string uri_;
    Document document_;
    Json answer_;
    std::size_t count_ = 0;
};

}  // namespace

std::string place_outside(const Document& document, const Json& answer) {
    std::vector<const Json*> parts = {&answer};
    while (!parts.empty()) {
        const Json& json = *parts.back();
        parts.pop_back();
        const bool is_position =
            json.is_object() && json.contains("line") && json.contains("character");
        if (is_position && !is_inside(document, position_in(json))) return json.dump();
        if (!json.is_structured()) continue;
        for (const Json& part : json) parts.push_back(&part);
    }
    return {};
}

std::size_t check_answers(const Options& options, const std::string& path, std::string text,
                          const std::function<void(const std::string&)>& fail) {
    return Asker(options, path, std::move(text), fail).ask_all();
}

namespace {

// Sends every request about one file, and returns its status.
int check_one(const Options& options, const std::string& path, Stream& out, Stream& err) {
    std::string text;
    if (!read_file(path, text, largest_file)) {
        put(err, "cannot read `" + path + "`: " + system_message(errno) + "\n");
        return 2;
    }
    std::size_t failures = 0;
    const std::size_t answers =
        check_answers(options, path, std::move(text), [&](const std::string& line) {
            put(out, path);
            put(out, ": " + line + "\n");
            ++failures;
        });
    put(out, path + ": " + std::to_string(answers) + " answers, " + std::to_string(failures) +
                 " wrong\n");
    return failures > 0 ? 1 : 0;
}

}  // namespace

int run_self_check(const Options& options) {
    Stream out;
    Stream err{2, {}, 0};
    int status = 0;
    for (const std::string& path : options.files) {
        try {
            status = std::max(status, check_one(options, path, out, err));
        } catch (const std::bad_alloc&) {
            put(err, "not enough memory for `" + path + "`\n");
            status = 2;
        }
        if (!flush(out)) return 2;
    }
    flush(err);
    return status;
}

}  // namespace orvex::frontend
