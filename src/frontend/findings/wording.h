// The words of findings.
#pragma once

#include "frontend/findings/messages.h"

#include <string>
#include <string_view>

namespace orvex::frontend {

// A message of the translator in the words of a finding: without stars and tag, the first letter
// small, names in back quotes, no full stop at its end.
std::string plain_words(std::string_view message, const Values& values);

// A name in back quotes.
std::string back_quoted(std::string_view text);

// The message of an entry in plain words, with <name> for what differs.
std::string title(const MessageEntry& entry);

// The first sentence of a paragraph, as help: first letter small, no full stop.
std::string as_help(std::string_view paragraph);

}  // namespace orvex::frontend
