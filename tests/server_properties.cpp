#include "server_properties.h"

#include "frontend/server/self_check.h"
#include "frontend/server/server.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

namespace server_properties {

using namespace orvex::frontend;
using std::string;

namespace {

const string uri = "file:///m.zlm";

constexpr std::array methods = {"textDocument/hover",
                                "textDocument/completion",
                                "textDocument/signatureHelp",
                                "textDocument/declaration",
                                "textDocument/definition",
                                "textDocument/references",
                                "textDocument/documentHighlight",
                                "textDocument/prepareRename",
                                "textDocument/rename",
                                "textDocument/formatting",
                                "textDocument/rangeFormatting",
                                "textDocument/onTypeFormatting",
                                "textDocument/diagnostic",
                                "textDocument/documentSymbol",
                                "textDocument/foldingRange",
                                "textDocument/selectionRange",
                                "textDocument/codeLens",
                                "textDocument/documentLink",
                                "textDocument/semanticTokens/full",
                                "textDocument/semanticTokens/full/delta",
                                "textDocument/semanticTokens/range",
                                "textDocument/inlayHint",
                                "textDocument/codeAction",
                                "workspace/diagnostic",
                                "workspace/symbol",
                                "textDocument/unknown"};

constexpr std::array pieces = {"$",          "\n",       "$PROD:",           "  O:P ", "\r",
                               "(",          "\xC3\xA4", "\xF0\x9F\x98\x80", "",       "$MODEL:M\n",
                               "$OFFTEXT\n", "Q:",       "* orvex: allow ",  "\t",     ")"};

// The text in a form that JSON can carry.
string valid(const string& text) {
    const string dumped = Json(text).dump(-1, ' ', false, Json::error_handler_t::replace);
    return Json::parse(dumped).get<string>();
}

bool begins_character(char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }

// A client that acts as the choices say.
class Client {
  public:
    Client(const string& text, string choices) : text_(valid(text)), choices_(std::move(choices)) {
        in_utf8_ = choose(2) == 1;
        Json abilities = {{"general", {{"positionEncodings", {in_utf8_ ? "utf-8" : "utf-16"}}}}};
        if (choose(2) == 1) abilities["textDocument"] = {{"diagnostic", Json::object()}};
        ask("initialize", {{"capabilities", abilities}});
        open();
        work_on_all();
    }

    string broken() {
        for (int action = 0; action < 40 && broken_.empty(); ++action) act(choose(8));
        work_on_all();
        if (broken_.empty() && !waiting_.empty()) return waiting_.front() + " has no answer";
        return broken_;
    }

    const string& text() const { return text_; }

  private:
    void act(std::size_t action) {
        switch (action) {
        case 0:
        case 1:
        case 2: edit(); break;
        case 3: work_on_all(); break;
        case 4: cancel(); break;
        case 5:
            if (choose(8) == 0) open();
            break;
        default: ask(methods[choose(methods.size())], any_params());
        }
    }

    // Repeats the choices, slightly different each time.
    std::size_t choose(std::size_t count) {
        const std::size_t at = at_++;
        if (choices_.empty()) return at % count;
        const std::size_t round = at / choices_.size();
        return (static_cast<unsigned char>(choices_[at % choices_.size()]) + 7 * round) % count;
    }

    void open() {
        tell("textDocument/didOpen",
             {{"textDocument",
               {{"uri", uri}, {"languageId", "orvex"}, {"version", ++version_}, {"text", text_}}}});
    }

    // A place between two characters, but not inside a CR LF.
    std::size_t any_offset() {
        std::size_t offset = (choose(256) * 256 + choose(256)) % (text_.size() + 1);
        const auto is_between = [&] {
            if (offset == 0 || offset == text_.size()) return true;
            return begins_character(text_[offset]) && text_.compare(offset - 1, 2, "\r\n") != 0;
        };
        while (!is_between()) --offset;
        return offset;
    }

    Json position(std::size_t offset) const {
        std::size_t line = 0;
        std::size_t begin = 0;
        for (std::size_t at = 0; at < offset; ++at) {
            const bool is_pair = text_.compare(at, 2, "\r\n") == 0;
            if (text_[at] != '\n' && (text_[at] != '\r' || is_pair)) continue;
            ++line;
            begin = at + 1;
        }
        return {{"line", line}, {"character", units(text_.substr(begin, offset - begin))}};
    }

    // Characters of four bytes are two units in UTF-16.
    std::size_t units(std::string_view text) const {
        if (in_utf8_) return text.size();
        std::size_t count = 0;
        for (const char c : text) {
            if (begins_character(c)) count += static_cast<unsigned char>(c) >= 0xF0 ? 2 : 1;
        }
        return count;
    }

    void edit() {
        Json changes = Json::array();
        for (std::size_t count = 1 + choose(3); count > 0; --count) {
            const std::size_t begin = any_offset();
            std::size_t end = std::min(begin + choose(12), text_.size());
            while (end < text_.size() && !begins_character(text_[end])) ++end;
            if (end > 0 && text_.compare(end - 1, 2, "\r\n") == 0) ++end;
            const string piece = pieces[choose(pieces.size())];
            changes.push_back(
                {{"range", {{"start", position(begin)}, {"end", position(end)}}}, {"text", piece}});
            text_.replace(begin, end - begin, piece);
        }
        tell("textDocument/didChange", {{"textDocument", {{"uri", uri}, {"version", ++version_}}},
                                        {"contentChanges", std::move(changes)}});
    }

    Json any_position() {
        if (choose(8) > 0) return position(any_offset());
        return {{"line", choose(100)}, {"character", choose(100)}};
    }

    Json any_params() {
        if (choose(30) == 0) return {{"textDocument", choose(2)}};
        const Json place = any_position();
        return {
            {"textDocument", {{"uri", choose(30) == 0 ? "file:///other.zlm" : uri}}},
            {"position", place},
            {"positions", {place, any_position()}},
            {"range", {{"start", place}, {"end", any_position()}}},
            {"context", {{"includeDeclaration", choose(2) == 1}, {"diagnostics", Json::array()}}},
            {"newName", choose(2) == 1 ? "NEW" : "no name"},
            {"previousResultId", std::to_string(choose(4))},
            {"query", "p"}};
    }

    void ask(const string& method, const Json& params) {
        const string id = std::to_string(++last_id_) + " " + method;
        waiting_.push_back(id);
        Json message = notification(method, params);
        message["id"] = id;
        take_message(server_, message.dump());
    }

    void tell(const string& method, const Json& params) {
        take_message(server_, notification(method, params).dump());
    }

    // The answer comes before those of requests sent earlier.
    void cancel() {
        if (waiting_.empty()) return;
        const std::size_t at = choose(waiting_.size());
        std::rotate(waiting_.begin(), waiting_.begin() + static_cast<std::ptrdiff_t>(at),
                    waiting_.begin() + static_cast<std::ptrdiff_t>(at) + 1);
        tell("$/cancelRequest", {{"id", waiting_.front()}});
    }

    void work_on_all() {
        while (!server_.queue.empty()) work_on_message(server_);
        const Document& document = server_.open.at(uri).document;
        if (document.source.bytes != text_) fail("the server has another text");
        show_changed(server_);
    }

    void take(const Json& message) {
        if (framed(message).empty()) fail("a message is empty");
        if (message.contains("method")) return take_notification(message);
        const string id = message.at("id").is_string() ? message.at("id").get<string>() : "";
        if (waiting_.empty() || waiting_.front() != id) return fail("not in order: " + id);
        waiting_.erase(waiting_.begin());
        if (message.contains("error")) {
            if (message.at("error").at("code") == internal_error) fail(id + ": " + message.dump());
        } else {
            check_places(id, message.at("result"));
        }
    }

    void take_notification(const Json& message) {
        if (message.at("method") != "textDocument/publishDiagnostics") return;
        if (message.at("params").at("version") != version_) fail("findings of another version");
        check_places("findings", message.at("params"));
    }

    void check_places(const string& what, const Json& answer) {
        if (!server_.open.contains(uri)) return;
        const string place = place_outside(server_.open.at(uri).document, answer);
        if (!place.empty()) fail(what + ": " + place + " is outside of the text");
    }

    void fail(const string& what) {
        if (broken_.empty()) broken_ = what;
    }

    string text_;  // as the client has it
    string choices_;
    std::size_t at_ = 0;
    bool in_utf8_ = false;
    int version_ = 0;
    int last_id_ = 0;
    std::vector<string> waiting_;  // ids, in the order in which answers must come
    string broken_;
    Options options_;
    Server server_{options_, [this](const Json& message) { take(message); },
                   [](std::string_view) {}};
};

}  // namespace

string broken(const string& text, const string& choices, std::size_t asked_size) {
    Client client(text, choices);
    string found = client.broken();
    if (!found.empty() || client.text().size() > asked_size) return found;
    check_answers(Options(), "m.zlm", client.text(), [&](const string& line) {
        if (found.empty()) found = line;
    });
    return found;
}

}  // namespace server_properties
