// The host's expressions as lists of parts, and questions about them.
#pragma once

#include "frontend/syntax/tree.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// A non-blank part of an expression.
struct Part {
    TokenKind kind = TokenKind::symbol;
    Range range;
    std::string text;  // in capitals
};

// Appends the parts of an expression, given as a range of the file.
void add_parts(std::string_view bytes, Range range, std::vector<Part>& parts);

// Is the part that symbol?
inline bool is_symbol(const Part& part, std::string_view text) {
    return part.kind == TokenKind::symbol && part.text == text;
}

// Parentheses, brackets and braces group.
bool opens_group(const Part& part);
bool closes_group(const Part& part);

// Is the part a relation between the sides of an equation, such as "=E="?
bool is_relation(const Part& part);

// Is the part a word other than an operator?
bool is_name(const Part& part);

// The index of a "(" without its ")" or a ")" without its "("; no_part if all match. Each kind of
// parentheses matches its own.
constexpr std::size_t no_part = static_cast<std::size_t>(-1);
std::size_t unmatched_group(std::span<const Part> parts);

// The index after the part that closes the group opened at `open`; the number of parts if none
// does.
std::size_t end_of_group(std::span<const Part> parts, std::size_t open);

// Is an operator missing before the part, because an operand ends right before it?
bool lacks_operator(std::span<const Part> parts, std::size_t at);

// The index of the first part before which an operator is missing; no_part if there is none.
std::size_t missing_operator(std::span<const Part> parts);

// The index of the part that begins the operand ending before `end`: that of TAX in TAX.L(R).
// Precondition: `end` is not 0.
std::size_t begin_of_operand(std::span<const Part> parts, std::size_t end);

// The number of arguments of the name at `at`, skipping its attributes: 0 if no parenthesis
// follows; -1 if unknown, as with a macro, or if there is no such part.
int count_arguments(std::span<const Part> parts, std::size_t at);

// Is an operator of the host used as a name at `at`, like LT in 1+LT(R)?
bool is_operator_as_name(std::span<const Part> parts, std::size_t at);

}  // namespace orvex::frontend
