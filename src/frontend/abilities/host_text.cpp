#include "frontend/abilities/host_text.h"

#include "frontend/syntax/expressions.h"
#include "frontend/syntax/host_lines.h"
#include "frontend/syntax/reading.h"

#include <cstddef>

namespace orvex::frontend {

namespace {

using std::string_view;

// Calls `take` with each line of the program until it returns false.
template <typename Take>
void each_host_line(const Document& document, const Take& take) {
    const Tree& tree = document.source.tree;
    bool in_comment = false;
    for (Index record = 0; record < line_count(tree); ++record) {
        const Range range = line_range(tree, record);
        const bool is_outside = tree.records[record].kind == RecordKind::outside;
        const HostLine kind = host_line(text_of(document.source.bytes, range));
        if (!is_outside || kind == HostLine::comment_ends) in_comment = false;
        if (is_outside && kind == HostLine::comment_begins) in_comment = true;
        const bool is_program = is_outside && !in_comment && kind == HostLine::text;
        if (is_program && !take(range)) return;
    }
}

// A quote that is not closed on its line is an apostrophe.
bool is_apostrophe(string_view line, std::size_t at, const Lexeme& next) {
    return next.kind == TokenKind::string && (next.end == at + 1 || line[next.end - 1] != line[at]);
}

// Is this a word of its own, not part of a number, of a macro or of "it's"?
bool is_apart(string_view line, std::size_t begin, std::size_t end) {
    const char before = begin > 0 ? line[begin - 1] : ' ';
    if (is_name_byte(before) || before == '%' || before == '\'') return false;
    return end == line.size() || line[end] != '%';
}

// Calls `take` with each word of the line until it returns false. Returns the last result.
template <typename Take>
bool each_word(string_view bytes, Range range, const Take& take) {
    const string_view line = text_of(bytes, range);
    for (std::size_t at = 0; at < line.size();) {
        Lexeme next = next_lexeme(line, at);
        if (is_apostrophe(line, at, next)) next = {TokenKind::symbol, at + 1};
        // An equation begins after "..".
        const bool opens =
            next.kind == TokenKind::attribute && at > 0 && line[at - 1] == '.' && at + 1 < next.end;
        const std::size_t begin = opens ? at + 1 : at;
        const bool is_word = opens || next.kind == TokenKind::word;
        if (is_word && is_apart(line, begin, next.end)) {
            const Range word = {range.begin + static_cast<Offset>(begin),
                                range.begin + static_cast<Offset>(next.end)};
            if (!take(word)) return false;
        }
        at = next.end;
    }
    return true;
}

// Calls `take` with each place of a name until it returns false.
template <typename Take>
void each_place(const Document& document, string_view name, const Take& take) {
    const string_view bytes = document.source.bytes;
    each_host_line(document, [&](Range line) {
        return each_word(bytes, line, [&](Range word) {
            return !same_when_read(text_of(bytes, word), name) || take(word);
        });
    });
}

}  // namespace

std::vector<Range> host_words(const Document& document, std::string_view name) {
    std::vector<Range> words;
    each_place(document, name, [&](Range word) {
        words.push_back(word);
        return true;
    });
    return words;
}

std::optional<Range> first_host_word(const Document& document, std::string_view name) {
    std::optional<Range> first;
    each_place(document, name, [&](Range word) {
        first = word;
        return false;
    });
    return first;
}

std::optional<Range> host_word_at(const Document& document, Offset offset) {
    std::optional<Range> found;
    each_host_line(document, [&](Range line) {
        if (offset > line.end) return true;
        if (offset < line.begin) return false;
        return each_word(document.source.bytes, line, [&](Range word) {
            if (word.begin <= offset && offset <= word.end) found = word;
            return word.end < offset;
        });
    });
    return found;
}

}  // namespace orvex::frontend
