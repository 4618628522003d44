#include "frontend/findings/messages.h"

#include "frontend/base/bytes.h"
#include "frontend/findings/pattern.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace orvex::frontend {

extern const std::string_view messages_page;

namespace {

// "Says", or "Says (variant)".
Wording read_wording(std::string_view name, std::string_view value) {
    const std::size_t open = name.find('(');
    if (open == std::string_view::npos) return {{}, std::string(value)};
    return {std::string(name.substr(open + 1, name.find(')') - open - 1)), std::string(value)};
}

// "- Ends: error"
void read_fact(MessageEntry& entry, std::string_view line) {
    const std::size_t colon = line.find(": ");
    if (colon == std::string_view::npos) return;
    const std::string_view name = line.substr(2, colon - 2);
    const std::string_view value = line.substr(colon + 2);
    if (name.starts_with("Says")) entry.says.push_back(read_wording(name, value));
    if (name.starts_with("Help")) entry.helps.push_back(read_wording(name, value));
    if (name == "Message" && value.size() > 2) {
        entry.messages.emplace_back(value.substr(1, value.size() - 2));
    } else if (name == "Ends") {
        entry.ends = value;
    } else if (name == "Level") {
        entry.level = value;
    } else if (name == "Unreachable") {
        entry.unreachable = value;
    }
}

void read_prose(std::vector<std::string>& paragraphs, std::string_view line, bool goes_on) {
    if (!goes_on) paragraphs.emplace_back();
    if (goes_on) paragraphs.back() += ' ';
    paragraphs.back() += line;
}

std::string block_of(const MessageEntry& entry, std::string_view kind) {
    for (const Example& example : entry.examples) {
        if (example.kind == kind) return example.text;
    }
    return {};
}

// An entry of the page, starting after the "## " of its heading.
MessageEntry read_entry(std::string_view text) {
    MessageEntry entry;
    entry.text = "## " + std::string(text);
    std::vector<std::string> paragraphs;
    bool in_block = false;
    std::string_view before;
    const std::vector<std::string_view> lines = lines_of(text);
    entry.code = trimmed(lines.front());
    for (std::size_t at = 1; at < lines.size(); ++at) {
        const std::string_view line = lines[at];
        if (line.starts_with("```")) {
            in_block = !in_block;
            if (in_block) entry.examples.push_back({std::string(line.substr(3)), {}});
        } else if (in_block) {
            entry.examples.back().text.append(line).append("\n");
        } else if (line.starts_with("- ") && paragraphs.empty()) {
            read_fact(entry, line);
        } else if (!line.empty()) {
            read_prose(paragraphs, line, !before.empty() && !paragraphs.empty());
        }
        before = line;
    }
    if (!paragraphs.empty()) entry.cause = paragraphs.front();
    if (paragraphs.size() > 1) entry.cure = paragraphs[1];
    entry.wrong = block_of(entry, "wrong");
    entry.corrected = block_of(entry, "corrected");
    return entry;
}

// Entries begin with "## " and end at the next heading; lines of an example are not headings.
std::vector<MessageEntry> read_page(std::string_view page) {
    std::vector<MessageEntry> entries;
    std::size_t begin = std::string_view::npos;
    const auto close = [&](std::size_t end) {
        if (begin == std::string_view::npos) return;
        entries.push_back(read_entry(trim_end(page.substr(begin, end - begin))));
        begin = std::string_view::npos;
    };
    bool in_block = false;
    for (std::size_t at = 0; at < page.size();) {
        const std::size_t end = std::min(page.find('\n', at), page.size());
        const std::string_view line = page.substr(at, end - at);
        if (line.starts_with("```")) in_block = !in_block;
        if (!in_block && (line.starts_with("# ") || line.starts_with("## "))) {
            close(at);
            if (line.starts_with("## ")) begin = at + 3;
        }
        at = end + 1;
    }
    close(page.size());
    return entries;
}

// Do the lines match all messages of an entry, or the first of them?
bool matches(const MessageEntry& entry, const std::vector<std::string_view>& lines, Values& values,
             std::size_t& fit) {
    if (lines.size() > entry.messages.size()) return false;
    fit = 0;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::vector<Piece> pieces = pieces_of(entry.messages[i]);
        if (!matches(pieces, lines[i], values)) return false;
        fit += weight(pieces);
    }
    return true;
}

}  // namespace

const std::vector<MessageEntry>& message_index() {
    static const std::vector<MessageEntry> entries = read_page(messages_page);
    return entries;
}

const MessageEntry* find_code(std::string_view code) {
    const std::string small = in_small_letters(code);
    for (const MessageEntry& entry : message_index()) {
        if (entry.code == small) return &entry;
    }
    return nullptr;
}

std::optional<Recognised> recognise(std::string_view message) {
    const std::vector<std::string_view> lines = lines_of(trim_end(message));
    if (lines.empty()) return {};
    std::optional<Recognised> best;
    std::size_t best_fit = 0;
    for (const MessageEntry& entry : message_index()) {
        if (entry.ends == "finding") continue;
        Values values;
        std::size_t fit = 0;
        if (!matches(entry, lines, values, fit) || fit <= best_fit) continue;
        best = Recognised{&entry, std::move(values)};
        best_fit = fit;
    }
    return best;
}

Severity level_of(const MessageEntry& entry) {
    for (const Severity level : {Severity::off, Severity::note, Severity::warning}) {
        if (entry.level == severity_name(level)) return level;
    }
    return entry.ends == "listing" ? Severity::warning : Severity::error;
}

}  // namespace orvex::frontend
