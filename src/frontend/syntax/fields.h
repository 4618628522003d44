// A field of the tree, taken apart.
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
    Range label;      // without its colon; of an opening record, empty
    Range value;      // without condition and further indices, blanks around it left out
    Range root;       // the value up to its arguments; a parenthesised expression as a whole
    Range all;        // the value with condition and further indices
    Range condition;  // after the "$", blanks around it left out
    Range ignored;    // what is dropped after the arguments of a name
    Range before;     // what is dropped before the label
    bool has_condition = false;
    ArgumentList own;
    ArgumentList extra;  // the further indices after "#"
    Index first = 0;     // its tokens, blanks at the end left out
    Index end = 0;
};

// Takes apart the field of a record of the tree of `bytes`; a field with a fault as far as it goes.
FieldParts parts_of(const Tree& tree, Index record, Index field);

}  // namespace orvex::frontend
