#include "frontend/findings/wording.h"

#include "frontend/base/bytes.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

namespace orvex::frontend {

namespace {

bool is_upper(char c) { return c >= 'A' && c <= 'Z'; }

std::string replaced(std::string_view text, std::string_view from, std::string_view to) {
    std::string out;
    for (std::size_t at = 0; (at = text.find(from)) != std::string_view::npos;) {
        out.append(text.substr(0, at)).append(to);
        text.remove_prefix(at + from.size());
    }
    return out.append(text);
}

// What is put otherwise than the translator has it. Names get their back quotes here, as the fixed
// text of a message does not tell them from words.
constexpr std::array<std::pair<std::string_view, std::string_view>, 22> wordings{{
    {"STOP  INVALID INPUT TO ORVEXPP", "invalid input to `orvexpp`"},
    {"SYNTAX ERROR IN $CONSTRAINT", "syntax error in `$CONSTRAINT`"},
    {"FIX ME in C glu: ", ""},
    {"$ERROR ", ""},
    {"$ABORT ", ""},
    {"Warning: ", ""},
    {"Parethesis", "parenthesis"},
    {"paren.", "parenthesis"},
    {"EOL", "end of line"},
    {". Find: ", ", found "},
    {"\":\"", "`:`"},
    {"I:, O:, D: or W:", "`I:`, `O:`, `D:` or `W:`"},
    {"must be V", "must be `V`"},
    {"PROD or DEMAND", "`PROD` or `DEMAND`"},
    {"$REPORT:", "`$REPORT:`"},
    {"following #", "following `#`"},
    {"NBLKIF", "`NBLKIF`"},
    {"palSetSystemName", "`palSetSystemName`"},
    {"palGetAuditLine", "`palGetAuditLine`"},
    {"'", ""},
    {"  ", " "},
    {" :", ":"},
}};

// " *** ADDSYM: " in front of a message.
std::string_view without_tag(std::string_view text) {
    text = text.substr(std::min(text.find_first_not_of(" *"), text.size()));
    std::size_t end = 0;
    while (end < text.size() && is_upper(text[end])) ++end;
    if (end > 1 && text.substr(end).starts_with(": ")) text.remove_prefix(end + 2);
    return text;
}

void make_start_small(std::string& text) {
    const bool word = text.size() > 1 && is_upper(text[0]) && !is_upper(text[1]);
    if (word) text[0] = static_cast<char>(text[0] - 'A' + 'a');
}

// Appends a value to a sentence: a name in back quotes, the system's words and numbers as they are.
void append_value(std::string& text, std::string_view name, std::string_view value) {
    if (value.empty()) return;
    if (!text.empty() && text.back() != ' ') text += ' ';
    const bool plain = name == "reason" || name == "count" || name == "unit";
    if (!plain) text += '`';
    text += value;
    if (!plain) text += '`';
}

// Appends a fixed text to a sentence. The end of a file name comes into the quotes of its name.
void append_literal(std::string& text, std::string_view literal) {
    std::string words(literal);
    for (const auto& [from, to] : wordings) words = replaced(words, from, to);
    const bool joined = text.ends_with('`') && words == ".zlm";
    if (joined) text.pop_back();
    text += words;
    if (joined) text += '`';
}

std::string sentence(const std::vector<Piece>& pieces, const Values& values) {
    std::string text;
    for (const Piece& piece : pieces) {
        const bool first = &piece == pieces.data();
        append_literal(text, first ? without_tag(piece.literal) : piece.literal);
        if (piece.name.empty()) continue;
        const auto value = values.find(std::string(piece.name));
        if (value != values.end()) {
            append_value(text, piece.name, value->second);
        } else {
            append_value(text, piece.name, std::string("<").append(piece.name).append(">"));
        }
    }
    text = replaced(text, "` `", " ");
    text.erase(text.find_last_not_of(" .:!") + 1);
    make_start_small(text);
    return text;
}

}  // namespace

std::string plain_words(std::string_view message, const Values& values) {
    const std::vector<std::string_view> lines = lines_of(trim_end(message));
    const std::optional<Recognised> known = recognise(message);
    std::string text;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (i > 0) text += "; ";
        if (!known) {
            text += sentence({{lines[i], {}}}, {});
            continue;
        }
        Values shown = known->values;
        for (const auto& [name, value] : values) shown[name] = value;
        text += sentence(pieces_of(known->entry->messages[i]), shown);
    }
    return text;
}

std::string words_of(const MessageEntry& entry, const Values& values) {
    std::string text;
    for (const std::string& message : entry.messages) {
        if (!text.empty()) text += "; ";
        text += sentence(pieces_of(message), values);
    }
    return text;
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
    std::string text;
    for (const std::string& message : entry.messages) {
        if (!text.empty()) text += "; ";
        text += entry.ends == "finding" ? message : sentence(pieces_of(message), {});
    }
    return text;
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
