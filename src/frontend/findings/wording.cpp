#include "frontend/findings/wording.h"

#include "frontend/base/bytes.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <vector>

namespace orvex::frontend {

namespace {

bool is_upper(char c) { return c >= 'A' && c <= 'Z'; }

void make_start_small(std::string& text) {
    const bool word = text.size() > 1 && is_upper(text[0]) && !is_upper(text[1]);
    if (word) text[0] = static_cast<char>(text[0] - 'A' + 'a');
}

// Replaces each {name} by value(name).
template <typename Value>
std::string filled(std::string_view text, const Value& value) {
    std::string out;
    for (std::size_t open = 0; (open = text.find('{')) != std::string_view::npos;) {
        const std::size_t close = text.find('}', open);
        if (close == std::string_view::npos) break;
        out.append(text.substr(0, open)).append(value(text.substr(open + 1, close - open - 1)));
        text.remove_prefix(close + 1);
    }
    return out.append(text);
}

std::string filled(std::string_view text, const Values& values) {
    return filled(text, [&](std::string_view name) {
        const auto value = values.find(std::string(name));
        return value == values.end() ? std::string() : value->second;
    });
}

// The text of a variant, or else the one without a variant; null if there is neither.
const Wording* find_wording(const std::vector<Wording>& wordings, std::string_view variant) {
    const Wording* usual = nullptr;
    for (const Wording& wording : wordings) {
        if (wording.variant == variant) return &wording;
        if (wording.variant.empty()) usual = &wording;
    }
    return usual;
}

}  // namespace

std::string message_of(const MessageEntry& entry, const Values& values, std::string_view variant) {
    const Wording* const wording = find_wording(entry.says, variant);
    return wording == nullptr ? std::string() : filled(wording->text, values);
}

std::string help_of(const MessageEntry& entry, const Values& values, std::string_view variant) {
    const Wording* const wording = find_wording(entry.helps, variant);
    return wording == nullptr ? as_help(entry.cure) : filled(wording->text, values);
}

std::string plain_words(std::string_view message) {
    const std::string_view text = trim_end(message);
    if (const std::optional<Recognised> known = recognise(text))
        return message_of(*known->entry, known->values);
    return std::string(text.substr(std::min(text.find_first_not_of(" *"), text.size())));
}

std::string line_list(const std::vector<int>& lines) {
    constexpr std::size_t most = 10;
    std::string text = lines.size() == 1 ? "line " : "lines ";
    const std::size_t shown = std::min(lines.size(), most);
    for (std::size_t i = 0; i < shown; ++i) {
        const bool last = i + 1 == lines.size();
        if (i > 0) text += last ? " and " : ", ";
        text += std::to_string(lines[i]);
    }
    if (lines.size() > most) text += " and " + std::to_string(lines.size() - most) + " more";
    return text;
}

std::string back_quoted(std::string_view text) { return "`" + std::string(text) + "`"; }

std::string title(const MessageEntry& entry) {
    const Wording* const wording = find_wording(entry.says, {});
    if (wording == nullptr) return {};
    return filled(wording->text,
                  [](std::string_view name) { return "<" + std::string(name) + ">"; });
}

std::string as_help(std::string_view paragraph) {
    bool in_quotes = false;
    std::size_t end = 0;
    for (; end < paragraph.size(); ++end) {
        if (paragraph[end] == '`') in_quotes = !in_quotes;
        const bool closes = end + 1 == paragraph.size() || paragraph[end + 1] == ' ';
        if (!in_quotes && paragraph[end] == '.' && closes) break;
    }
    std::string help(paragraph.substr(0, end));
    make_start_small(help);
    return help;
}

}  // namespace orvex::frontend
