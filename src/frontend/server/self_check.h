// Tests the server's abilities on files, without an editor: sends every request at every token.
#pragma once

#include "frontend/abilities/document.h"
#include "frontend/cli/options.h"
#include "frontend/server/wire.h"

#include <functional>
#include <string>
#include <string_view>

namespace orvex::frontend {

// Sends every request about a text. Each error in an answer is passed to `fail` as a line: an error
// answer, a place outside the text, or a definition that is not among the references. Returns the
// number of answers.
std::size_t check_answers(const Options& options, const std::string& path, std::string text,
                          const std::function<void(const std::string&)>& fail);

// A position in an answer that is outside the text, as JSON; empty if there is none.
std::string place_outside(const Document& document, const Json& answer);

// The command: `orvex lsp --check FILE...`. Returns the exit status.
int run_self_check(const Options& options);

}  // namespace orvex::frontend
