// The server's abilities on files, without an editor: everything is asked at every token.
#pragma once

#include "frontend/abilities/document.h"
#include "frontend/cli/options.h"
#include "frontend/server/wire.h"

#include <functional>
#include <string>
#include <string_view>

namespace orvex::frontend {

// Asks everything about a text. What is wrong with an answer is given to `fail`, a line each: an
// error, a place outside of the text, a definition that is not among the references. Returns the
// number of answers.
std::size_t check_answers(const Options& options, const std::string& path, std::string text,
                          const std::function<void(const std::string&)>& fail);

// A position within an answer that is outside of the text, as JSON; empty where there is none.
std::string place_outside(const Document& document, const Json& answer);

// The command: `orvex lsp --check FILE...`. Returns the exit status.
int run_self_check(const Options& options);

}  // namespace orvex::frontend
