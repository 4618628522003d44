// The words of the host's expressions, in values, conditions and constraints.
#pragma once

#include "frontend/syntax/tree.h"

#include <cstddef>
#include <string_view>

namespace orvex::frontend {

// Can the byte be part of a name: a letter, a digit or "_"?
bool is_name_byte(char c);

// Is the text a name and no more? It does not begin with a digit.
bool is_plain_name(std::string_view text);

// Can the text be a name once the host has put the text in the place of each "%X%"? Letters that
// are not of ASCII pass.
bool may_be_name(std::string_view text);

struct Lexeme {
    TokenKind kind = TokenKind::symbol;
    std::size_t end = 0;
};

// The part of an expression that begins at `at`, which is before the end of the text: blanks, a
// word, an attribute, a number, a string in quotes (without its end, too), "%X%", a relation such
// as "=E=", or one other character.
Lexeme next_lexeme(std::string_view text, std::size_t at);

// Is the word an operator of the host (EQ, AND, ...)? In capitals.
bool is_operator_word(std::string_view word);

// Is the word a function of the host when it comes before a parenthesis (SUM, ORD, ...)? In
// capitals.
bool is_function(std::string_view word);

// Does a value have a minus before the whole of it, so that it is below zero where its names are
// above: `-5`, `(-X0)`, `-(A+B)`? Of `-A+B` that is not known.
bool is_negated(std::string_view value);

}  // namespace orvex::frontend
