// A field of the tree, split into its parts.
#pragma once

#include "frontend/syntax/tree.h"
#include "notation/limits.h"

#include <array>
#include <span>

namespace orvex::frontend {

// The arguments in a pair of parentheses. A blank one is an empty range.
struct ArgumentList {
    std::array<Range, notation::most_arguments + 1> ranges{};
    std::size_t count = 0;

    std::span<const Range> arguments() const { return {ranges.data(), count}; }
};

struct FieldParts {
    Range label;      // without its colon; empty for an opening record
    Range value;      // without condition, extra indices and surrounding blanks
    Range root;       // the value up to its arguments; a parenthesised expression as a whole
    Range all;        // the value with condition and extra indices
    Range condition;  // after the "$", without surrounding blanks
    Range ignored;    // dropped text after the arguments of a name
    Range before;     // dropped text before the label
    bool has_condition = false;
    ArgumentList own;
    ArgumentList extra;  // the extra indices after "#"
    Index first = 0;     // its tokens, without blanks at the end
    Index end = 0;
};

// Splits the field of a record of the tree of `bytes` into its parts; a field with a fault as far
// as possible.
FieldParts parts_of(const Tree& tree, Index record, Index field);

}  // namespace orvex::frontend
