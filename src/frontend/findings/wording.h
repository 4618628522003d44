// The words of findings.
#pragma once

#include "frontend/findings/messages.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// A message of the translator in the words of a finding: without stars and tag, the first letter
// small, names in back quotes, no full stop at its end.
std::string plain_words(std::string_view message, const Values& values);

// The same for the message of an entry, with these values in their places.
std::string words_of(const MessageEntry& entry, const Values& values);

// "line 3", "lines 3, 5 and 8"; a long list is cut and says how many more there are. Precondition:
// not empty.
std::string line_list(const std::vector<int>& lines);

// A name in back quotes.
std::string back_quoted(std::string_view text);

// The message of an entry in plain words, with <name> for what differs.
std::string title(const MessageEntry& entry);

// The first sentence of a paragraph, as help: first letter small, no full stop.
std::string as_help(std::string_view paragraph);

}  // namespace orvex::frontend
