#include "frontend/syntax/expressions.h"

#include "text/characters.h"

#include <algorithm>
#include <iterator>

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

// An exponent is part of a number only with a digit.
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

}  // namespace

bool is_name_byte(char c) { return is_letter(c) || is_digit(c); }

bool is_plain_name(std::string_view text) {
    return !text.empty() && !is_digit(text.front()) &&
           std::all_of(text.begin(), text.end(), is_name_byte);
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

}  // namespace orvex::frontend
