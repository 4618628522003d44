// The language server: what it knows of its client and of the open texts, and what it does with
// each message. It does nothing with descriptors: messages come as texts and leave by `send`.
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

// What the client says that it can do.
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

// An open text with what was found in it.
struct Open {
    Document document;
    std::vector<Finding> findings;  // of the version that is shown
    bool is_checked = false;        // the findings of the tree are those of the text
    bool is_judged = false;         // those of the translator are among them
    bool is_shown = false;          // the client has them
    Clock::time_point judge_at;     // when the translator is asked, if it has not been
    // The coloured tokens that the client has, as the protocol encodes them.
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
    std::deque<Json> queue = {};            // messages that came and were not worked on yet
    std::int64_t next_id = 1;               // of a request to the client
    Trace trace = Trace::off;
    bool is_initialized = false;
    bool is_shut_down = false;
    std::optional<int> exit_status = {};  // once the server is to end
};

// Takes a message into the queue; one that is not JSON-RPC is answered at once. A request in the
// queue that is cancelled is answered and leaves it.
void take_message(Server& server, const std::string& text);

// Works on the first message of the queue. Precondition: there is one.
void work_on_message(Server& server);

// The open text of a request's parameters, read. Throws RequestError where it is not open.
Open& open_text(Server& server, const Json& params);

// Checks the texts that have changed, and shows what was found in them.
void show_changed(Server& server);

// Notes what the translator makes of a version of a text, if it is still that version.
void take_verdict(Server& server, const std::string& uri, std::int64_t version,
                  std::vector<Finding> findings);

// A method of the protocol. A notification has no answer.
struct Method {
    std::string_view name;
    bool has_answer;
    Json (*work)(Server& server, const Json& params);
};

// The method of that name, or null.
const Method* find_method(std::string_view name);

}  // namespace orvex::frontend
