// The words of the host's expressions, in values, conditions and constraints.
#pragma once

#include "frontend/syntax/tree.h"

#include <cstddef>
#include <string_view>

namespace orvex::frontend {

// Can the byte be part of a name: a letter, a digit or "_"?
bool is_name_byte(char c);

// Is the text just a name? It does not begin with a digit.
bool is_plain_name(std::string_view text);

// Can the text be a name once the host has replaced each "%X%"? Non-ASCII letters pass.
bool may_be_name(std::string_view text);

struct Lexeme {
    TokenKind kind = TokenKind::symbol;
    std::size_t end = 0;
};

// The part of an expression that begins at `at`, which must be before the end of the text: blanks,
// a word, an attribute, a number, a string in quotes (even without its closing quote), "%X%", a
// relation such as "=E=", or one other character.
Lexeme next_lexeme(std::string_view text, std::size_t at);

// Is the word, in capitals, an operator of the host (EQ, AND, ...)?
bool is_operator_word(std::string_view word);

// Is the word, in capitals, a function of the host when it comes before a parenthesis (SUM, ORD,
// ...)?
bool is_function(std::string_view word);

// Does a minus apply to the whole value, so that it is negative if its names are positive: `-5`,
// `(-X0)`, `-(A+B)`? For `-A+B` that is unknown.
bool is_negated(std::string_view value);

}  // namespace orvex::frontend
