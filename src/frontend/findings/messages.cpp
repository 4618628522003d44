#include "frontend/findings/messages.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <utility>

namespace orvex::frontend {

extern const std::string_view messages_page;

namespace {

std::string_view trim_end(std::string_view text) {
    return text.substr(0, text.find_last_not_of(" \t\r\n") + 1);
}

std::string_view trim(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    return first == std::string_view::npos ? std::string_view() : trim_end(text.substr(first));
}

bool is_upper(char c) { return c >= 'A' && c <= 'Z'; }
bool is_lower(char c) { return c >= 'a' && c <= 'z'; }
bool is_digit(char c) { return c >= '0' && c <= '9'; }

std::vector<std::string_view> lines_of(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        lines.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

// The page, entry by entry.

// "- Ends: error"
void read_fact(MessageEntry& entry, std::string_view line) {
    const std::size_t colon = line.find(": ");
    if (colon == std::string_view::npos) return;
    const std::string_view name = line.substr(2, colon - 2);
    const std::string_view value = line.substr(colon + 2);
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

// An entry of the page, from behind the "## " of its heading.
MessageEntry read_entry(std::string_view text) {
    MessageEntry entry;
    entry.text = "## " + std::string(text);
    std::vector<std::string> paragraphs;
    bool in_block = false;
    std::string_view before;
    const std::vector<std::string_view> lines = lines_of(text);
    entry.code = trim(lines.front());
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

// Entries begin with "## " and end at the next heading; lines of an example are no headings.
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

// Patterns.

// A fixed text of a pattern, and the name of what stands behind it; the last one has none.
struct Piece {
    std::string_view literal;
    std::string_view name;
};

// The length of a place "<name>" or "<name:20>" at the start of a text; 0 where there is none.
std::size_t place_length(std::string_view text) {
    if (!text.starts_with('<')) return 0;
    std::size_t at = 1;
    while (at < text.size() && is_lower(text[at])) ++at;
    if (at == 1) return 0;
    if (at < text.size() && text[at] == ':') {
        ++at;
        while (at < text.size() && is_digit(text[at])) ++at;
    }
    return at < text.size() && text[at] == '>' ? at + 1 : 0;
}

std::vector<Piece> pieces_of(std::string_view pattern) {
    std::vector<Piece> pieces;
    std::size_t begin = 0;
    for (std::size_t at = 0; at < pattern.size();) {
        const std::size_t length = place_length(pattern.substr(at));
        if (length == 0) {
            ++at;
            continue;
        }
        const std::string_view place = pattern.substr(at + 1, length - 2);
        pieces.push_back({pattern.substr(begin, at - begin), place.substr(0, place.find(':'))});
        begin = at += length;
    }
    pieces.push_back({pattern.substr(begin), {}});
    return pieces;
}

using Values = std::map<std::string, std::string>;

// Whether a line has the form of the pattern. `values` gets what stands in its places.
bool matches(const std::vector<Piece>& pieces, std::string_view line, Values& values) {
    const std::string_view text = trim_end(line);
    const std::string padded = std::string(text) + ' ';  // a value can be blank
    std::size_t at = 0;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const bool last = i + 1 == pieces.size();
        const std::string_view literal = last ? trim_end(pieces[i].literal) : pieces[i].literal;
        std::size_t found = i == 0 ? 0 : padded.find(literal, at);
        if (last && i > 0)
            found = std::max(at, text.size() - std::min(text.size(), literal.size()));
        if (found == std::string::npos || padded.compare(found, literal.size(), literal) != 0) {
            return false;
        }
        if (i > 0) {
            values[std::string(pieces[i - 1].name)] = trim(padded.substr(at, found - at));
        }
        at = found + literal.size();
    }
    return at >= text.size();
}

// What makes one pattern fit better than another: its fixed characters.
std::size_t weight(const std::vector<Piece>& pieces) {
    std::size_t sum = 0;
    for (const Piece& piece : pieces) sum += piece.literal.size();
    return sum;
}

// The lines of a message, or the first of them, in the form of an entry.
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

std::vector<std::string_view> message_lines(std::string_view message) {
    return lines_of(trim_end(message));
}

// Words.

std::string replaced(std::string_view text, std::string_view from, std::string_view to) {
    std::string out;
    for (std::size_t at = 0; (at = text.find(from)) != std::string_view::npos;) {
        out.append(text.substr(0, at)).append(to);
        text.remove_prefix(at + from.size());
    }
    return out.append(text);
}

// What is put otherwise than the translator has it. Names get their back quotes here, as the fixed text
// of a message does not tell them from words.
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

const std::vector<MessageEntry>& message_index() {
    static const std::vector<MessageEntry> entries = read_page(messages_page);
    return entries;
}

const MessageEntry* find_code(std::string_view code) {
    for (const MessageEntry& entry : message_index()) {
        if (entry.code == code) return &entry;
    }
    return nullptr;
}

std::optional<Recognised> recognise(std::string_view message) {
    const std::vector<std::string_view> lines = message_lines(message);
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

std::string plain_words(std::string_view message,
                        const std::map<std::string, std::string>& values) {
    const std::vector<std::string_view> lines = message_lines(message);
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

Severity level_of(const MessageEntry& entry) {
    const bool warning = entry.level == "warning" || entry.ends == "listing";
    return warning ? Severity::warning : Severity::error;
}

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
