// The language server: what it knows about its client and the open texts, and how it handles each
// message. It does not use descriptors: messages arrive as texts and leave through `send`.
#pragma once

#include "frontend/abilities/document.h"
#include "frontend/cli/options.h"
#include "frontend/findings/finding.h"
#include "frontend/server/types.h"
#include "frontend/server/wire.h"

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

using Clock = std::chrono::steady_clock;

// The client's declared capabilities.
struct Client {
    bool pulls_findings = false;
    bool refreshes_findings = false;
    bool links_definitions = false;
    bool nests_symbols = false;
    bool annotates_edits = false;
    bool edits_by_version = false;
    bool prepares_renaming = false;
    bool has_snippets = false;
};

// An open text with its findings.
struct Open {
    Document document;
    std::vector<Finding> findings;  // of the version shown
    bool is_checked = false;        // they include those of the tree for the current text
    bool is_judged = false;         // and those of the translator
    bool is_shown = false;          // the client has them
    Clock::time_point judge_at;     // when the translator is due, if it has not judged the text
    // The coloured tokens that the client has, as encoded in the protocol.
    std::vector<std::uint32_t> tokens;
    std::string tokens_id;
    std::uint64_t tokens_count = 0;
};

enum class Trace { off, messages, verbose };

struct Server {
    const Options& options;
    std::function<void(const Json&)> send;
    std::function<void(std::string_view)> log;
    Client client = {};
    Units units = Units::utf16;
    std::vector<std::string> folders = {};  // paths of the workspace
    std::map<std::string, Open> open = {};  // by URI
    std::deque<Json> queue = {};            // messages received but not yet processed
    std::int64_t next_id = 1;               // for a request to the client
    Trace trace = Trace::off;
    bool is_initialized = false;
    bool is_shut_down = false;
    std::optional<int> exit_status = {};  // set when the server must end
};

// Puts a message into the queue; one that is not JSON-RPC is answered at once. A request in the
// queue that is cancelled is answered and removed.
void take_message(Server& server, const std::string& text);

// Processes the first message of the queue. Precondition: there is one.
void work_on_message(Server& server);

// The open text in a request's parameters, with its models read. Throws RequestError if it is not
// open.
Open& open_text(Server& server, const Json& params);

// Checks the texts that have changed, and shows their findings.
void show_changed(Server& server);

// Takes the translator's findings about a version of a text, if it is still the current one.
void take_verdict(Server& server, const std::string& uri, std::int64_t version,
                  std::vector<Finding> findings);

// A method of the protocol. A notification has no answer.
struct Method {
    std::string_view name;
    bool has_answer;
    Json (*work)(Server& server, const Json& params);
};

// The method with that name, or null.
const Method* find_method(std::string_view name);

}  // namespace orvex::frontend
