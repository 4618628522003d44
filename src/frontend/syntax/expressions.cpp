#include "frontend/syntax/expressions.h"

#include "frontend/base/bytes.h"
#include "text/characters.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace orvex::frontend {

namespace {

using std::string_view;

constexpr string_view operators[] = {"AND", "EQ", "GE", "GT", "LE", "LT", "NE", "NOT", "OR", "XOR"};

constexpr string_view functions[] = {"ABS", "CARD", "EXP",   "LOG",  "MAX",
                                     "MIN", "ORD",  "POWER", "SQRT", "SUM"};

bool is_letter(char c) {
    const char letter = upper_letter(c);
    return (letter >= 'A' && letter <= 'Z') || c == '_';
}

std::size_t end_of_word(string_view text, std::size_t at) {
    while (at < text.size() && is_name_byte(text[at])) ++at;
    return at;
}

std::size_t end_of_digits(string_view text, std::size_t at) {
    while (at < text.size() && is_digit(text[at])) ++at;
    return at;
}

// An exponent belongs to a number only if it has a digit.
std::size_t end_of_number(string_view text, std::size_t at) {
    at = end_of_digits(text, at);
    if (at < text.size() && text[at] == '.') at = end_of_digits(text, at + 1);
    if (at >= text.size()) return at;
    const char letter = upper_letter(text[at]);
    if (letter != 'E' && letter != 'D') return at;
    std::size_t digits = at + 1;
    if (digits < text.size() && (text[digits] == '+' || text[digits] == '-')) ++digits;
    const std::size_t end = end_of_digits(text, digits);
    return end == digits ? at : end;
}

bool has_digit_at(string_view text, std::size_t at) {
    return at < text.size() && is_digit(text[at]);
}

std::size_t after(string_view text, std::size_t found) {
    return found == string_view::npos ? text.size() : found + 1;
}

Lexeme lexeme_after_mark(string_view text, std::size_t at) {
    const char mark = text[at];
    if (mark == '"' || mark == '\'') {
        return {TokenKind::string, after(text, text.find(mark, at + 1))};
    }
    const bool is_relation =
        mark == '=' && at + 2 < text.size() && is_letter(text[at + 1]) && text[at + 2] == '=';
    if (is_relation) return {TokenKind::symbol, at + 3};
    const std::size_t end = end_of_word(text, at + 1);
    if (mark == '.' && end > at + 1) return {TokenKind::attribute, end};
    const bool is_macro = mark == '%' && end > at + 1 && end < text.size() && text[end] == '%';
    if (is_macro) return {TokenKind::macro, end + 1};
    return {TokenKind::symbol, at + 1};
}

std::string in_capitals(string_view text) {
    std::string result(text);
    make_upper(result);
    return result;
}

// The change of nesting depth after a lexeme.
int step_of(string_view lexeme) {
    if (lexeme == "(") return 1;
    return lexeme == ")" ? -1 : 0;
}

// The expression without surrounding blanks and pairs of parentheses.
string_view without_parentheses(string_view text) {
    for (;;) {
        text = trimmed(text);
        if (!text.starts_with('(')) return text;
        int depth = 0;
        std::size_t at = 0;
        do {
            const std::size_t end = next_lexeme(text, at).end;
            depth += step_of(text.substr(at, end - at));
            at = end;
        } while (depth > 0 && at < text.size());
        if (depth > 0 || at < text.size()) return text;
        text = text.substr(1, text.size() - 2);
    }
}

// Is the text only names, numbers and parentheses, multiplied and divided?
bool is_product(string_view text) {
    int depth = 0;
    for (std::size_t at = 0; at < text.size();) {
        const Lexeme lexeme = next_lexeme(text, at);
        const string_view part = text.substr(at, lexeme.end - at);
        at = lexeme.end;
        depth += step_of(part);
        const bool is_factor =
            lexeme.kind != TokenKind::symbol || step_of(part) != 0 || part == "*" || part == "/";
        const bool is_allowed = is_factor && !is_operator_word(in_capitals(part));
        if (depth < 0 || (depth == 0 && !is_allowed)) return false;
    }
    return !trimmed(text).empty();
}

}  // namespace

bool is_name_byte(char c) { return is_letter(c) || is_digit(c); }

bool is_plain_name(std::string_view text) {
    return !text.empty() && !is_digit(text.front()) &&
           std::all_of(text.begin(), text.end(), is_name_byte);
}

bool may_be_name(std::string_view text) {
    if (text.empty() || is_digit(text.front())) return false;
    for (std::size_t at = 0; at < text.size();) {
        const bool is_foreign = static_cast<unsigned char>(text[at]) >= 0x80;
        if (is_name_byte(text[at]) || is_foreign) {
            ++at;
            continue;
        }
        const Lexeme next = next_lexeme(text, at);
        if (next.kind != TokenKind::macro) return false;
        at = next.end;
    }
    return true;
}

Lexeme next_lexeme(std::string_view text, std::size_t at) {
    const char c = text[at];
    if (c == blank_char) {
        return {TokenKind::blank, std::min(text.find_first_not_of(c, at), text.size())};
    }
    if (is_letter(c)) return {TokenKind::word, end_of_word(text, at)};
    const bool is_number = is_digit(c) || (c == '.' && has_digit_at(text, at + 1));
    if (is_number) return {TokenKind::number, end_of_number(text, at)};
    return lexeme_after_mark(text, at);
}

bool is_operator_word(std::string_view word) {
    return std::find(std::begin(operators), std::end(operators), word) != std::end(operators);
}

bool is_function(std::string_view word) {
    return std::find(std::begin(functions), std::end(functions), word) != std::end(functions);
}

bool is_negated(std::string_view value) {
    bool negated = false;
    for (;;) {
        value = without_parentheses(value);
        if (!value.starts_with('-')) return negated;
        value.remove_prefix(1);
        if (!is_product(value)) return false;
        negated = !negated;
    }
}

}  // namespace orvex::frontend
