// The index of messages, docs/messages.md, which is built into the program: what each code means,
// and the code of each message of the translator.
#pragma once

#include "frontend/findings/finding.h"
#include "frontend/findings/pattern.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// A block of an entry: a text of its example, named after its kind ("wrong", "control", "run",
// ...).
struct Example {
    std::string kind;
    std::string text;
};

// A text with {name} for the parts that vary. An entry can have further ones, each with the name of
// its variant.
struct Wording {
    std::string variant;
    std::string text;
};

struct MessageEntry {
    std::string code;
    // The translator's own words: patterns, with <name> for the parts that vary.
    std::vector<std::string> messages;
    // The messages of findings, and their help if it is not the first sentence of the cure.
    std::vector<Wording> says;
    std::vector<Wording> helps;
    // How it arrives: "error", "overflow", "stdout", ..., "finding".
    std::string ends;
    // The fact Level, if it ends in a "finding": "error", "warning", "note", "off".
    std::string level;
    // The paragraphs, each one line.
    std::string cause;
    std::string cure;
    // Examples; empty if there are none.
    std::string wrong;
    std::string corrected;
    // If no input leads to it, the reason.
    std::string unreachable;
    // All blocks, these two included.
    std::vector<Example> examples;
    // The whole entry, as on the page.
    std::string text;
};

// All entries, in the order of the page.
const std::vector<MessageEntry>& message_index();

// The entry of a code, in upper or lower case, or null.
const MessageEntry* find_code(std::string_view code);

struct Recognised {
    const MessageEntry* entry = nullptr;
    // The text of the message for each <name>.
    Values values;
};

// The entry that matches this message; none if the message is not in the index.
std::optional<Recognised> recognise(std::string_view message);

// The level of a finding with the entry's code, before options change it.
Severity level_of(const MessageEntry& entry);

}  // namespace orvex::frontend
