// The wording of findings.
#pragma once

#include "frontend/findings/messages.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// The message of an entry, or of its variant with that name if it has one, with the values filled
// in.
std::string message_of(const MessageEntry& entry, const Values& values,
                       std::string_view variant = {});

// The same for the help; by default the first sentence of the cure.
std::string help_of(const MessageEntry& entry, const Values& values, std::string_view variant = {});

// A message of the translator in the words of a finding. If it is not in the index, only its
// leading stars are removed.
std::string plain_words(std::string_view message);

// "line 3", "lines 3, 5 and 8"; a long list is cut and says how many more there are. Precondition:
// not empty.
std::string line_list(const std::vector<int>& lines);

// A name in backticks.
std::string back_quoted(std::string_view text);

// The message of an entry, with <name> for the parts that vary.
std::string title(const MessageEntry& entry);

// The first sentence of a paragraph, as help: it begins with a lower-case letter and has no full
// stop.
std::string as_help(std::string_view paragraph);

}  // namespace orvex::frontend
