// The words of findings.
#pragma once

#include "frontend/findings/messages.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// The message of an entry with the values in their places; that of a variant where it has one of
// that name.
std::string message_of(const MessageEntry& entry, const Values& values,
                       std::string_view variant = {});

// The same for what it advises; by default the first sentence of its cure.
std::string help_of(const MessageEntry& entry, const Values& values, std::string_view variant = {});

// A message of the translator as a finding says it. One that is not in the index is left as it is,
// without the stars before it.
std::string plain_words(std::string_view message);

// "line 3", "lines 3, 5 and 8"; a long list is cut and says how many more there are. Precondition:
// not empty.
std::string line_list(const std::vector<int>& lines);

// A name in back quotes.
std::string back_quoted(std::string_view text);

// The message of an entry, with <name> for what differs.
std::string title(const MessageEntry& entry);

// The first sentence of a paragraph, as help: first letter small, no full stop.
std::string as_help(std::string_view paragraph);

}  // namespace orvex::frontend
