// The index of messages, docs/messages.md, which is built into the program: what each code means,
// and which code a message of the translator has.
#pragma once

#include "frontend/findings/finding.h"
#include "frontend/findings/pattern.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// A block of an entry: a text of its example, named after what it is ("wrong", "control", "run",
// ...).
struct Example {
    std::string kind;
    std::string text;
};

// A text with {name} for what differs from case to case. An entry can have further ones, each with
// the name of its variant.
struct Wording {
    std::string variant;
    std::string text;
};

struct MessageEntry {
    std::string code;
    // The translator's own words: patterns, with <name> for what differs from case to case.
    std::vector<std::string> messages;
    // What findings say, and what they advise where that is not the first sentence of the cure.
    std::vector<Wording> says;
    std::vector<Wording> helps;
    // How it arrives: "error", "overflow", "stdout", ..., "finding".
    std::string ends;
    // Of the fact Level, for ends "finding": "error", "warning", "note", "off".
    std::string level;
    // The paragraphs, each one line.
    std::string cause;
    std::string cure;
    // Examples; empty if there are none.
    std::string wrong;
    std::string corrected;
    // Why no input leads to it, where none does.
    std::string unreachable;
    // All blocks, these two included.
    std::vector<Example> examples;
    // The whole entry, as the page has it.
    std::string text;
};

// All entries, in the order of the page.
const std::vector<MessageEntry>& message_index();

// The entry of a code, in letters of any case, or null.
const MessageEntry* find_code(std::string_view code);

struct Recognised {
    const MessageEntry* entry = nullptr;
    // What the message has for <name>.
    Values values;
};

// The entry whose message this is; none where the translator says something that is not in the
// index.
std::optional<Recognised> recognise(std::string_view message);

// What a finding with the entry's code is, before the options have their say.
Severity level_of(const MessageEntry& entry);

}  // namespace orvex::frontend
