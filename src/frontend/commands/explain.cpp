#include "frontend/commands/explain.h"

#include "frontend/base/style.h"
#include "frontend/base/wrapping.h"
#include "frontend/findings/messages.h"
#include "frontend/findings/report.h"
#include "frontend/findings/wording.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace orvex::frontend {

namespace {

constexpr std::size_t text_width = 80;

// The blocks of an entry that are shown, and the line above each.
constexpr std::array<std::pair<std::string_view, std::string_view>, 8> shown_blocks{{
    {"wrong", "Wrong:"},
    {"wrong-command", "Wrong, as a command that prints the model:"},
    {"data", "Wrong, with the data:"},
    {"control", "Wrong control file:"},
    {"corrected", "Corrected:"},
    {"corrected-command", "Corrected, as a command that prints the model:"},
    {"corrected-data", "Corrected, with the data:"},
    {"corrected-control", "Corrected control file:"},
}};

// A paragraph wrapped to the terminal.
std::string paragraph(std::string_view text) {
    std::string lines;
    for (const std::string& line : wrapped(text, text_width)) lines += line + '\n';
    return lines;
}

std::string indented(std::string_view lines) {
    std::string text;
    while (!lines.empty()) {
        const std::size_t end = std::min(lines.find('\n'), lines.size());
        if (end > 0) text.append("    ").append(lines.substr(0, end));
        text += '\n';
        lines.remove_prefix(std::min(end + 1, lines.size()));
    }
    return text;
}

std::string under(std::string_view heading, std::string_view lines, bool colour) {
    return '\n' + styled(Style::bold, std::string(heading), colour) + "\n\n" + indented(lines);
}

std::string heading(const MessageEntry& entry, bool colour) {
    const Severity level = level_of(entry);
    return styled(style_of(level), severity_name(level) + '[' + entry.code + ']', colour) +
           styled(Style::bold, ": " + title(entry), colour) + '\n';
}

}  // namespace

std::string explain(std::string_view code, bool colour) {
    const MessageEntry* entry = find_code(code);
    if (entry == nullptr) return {};
    std::string text =
        heading(*entry, colour) + '\n' + paragraph(entry->cause) + '\n' + paragraph(entry->cure);
    if (entry->ends != "finding") {
        std::string lines;
        for (const std::string& message : entry->messages) {
            lines += message.substr(message.find_first_not_of(' ')) + '\n';
        }
        text += under("The translator's own words:", lines, colour);
    }
    if (!entry->unreachable.empty()) {
        text += '\n' + paragraph("No model causes this message: " + entry->unreachable + '.');
    }
    for (const auto& [kind, label] : shown_blocks) {
        for (const Example& example : entry->examples) {
            if (example.kind == kind) text += under(label, example.text, colour);
        }
    }
    return text;
}

std::string list_codes() {
    std::size_t width = 0;
    for (const MessageEntry& entry : message_index()) width = std::max(width, entry.code.size());
    std::string text;
    for (const MessageEntry& entry : message_index()) {
        std::string code = entry.code;
        code.resize(width + 2, ' ');
        std::string level = severity_name(level_of(entry));
        level.resize(9, ' ');
        text += code + level + title(entry) + '\n';
    }
    return text;
}

}  // namespace orvex::frontend
