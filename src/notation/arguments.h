// Argument lists: the own arguments of a value such as X(I,J), and the "#" list of further indices
// over which a field is repeated, as in X(I)#(J,K). And what one argument is.
#pragma once

#include "notation/cut.h"
#include "notation/fault.h"
#include "notation/limits.h"

#include <array>
#include <cstddef>

namespace orvex::notation {

// The arguments that could be cut are there with a fault, too.
struct ArgumentsCut {
    Fault fault = Fault::none;
    std::size_t place = 0;  // what the fault is at: the mark or the parenthesis, or the argument
    std::size_t open = View::npos;  // the "(" of the list, or npos
    std::size_t end = 0;            // after the ")" of the list; 0 where there is none
    int count = 0;
    std::array<Cut, most_arguments + 1>
        arguments;  // cut at 80 characters, without blanks around them
};

// The own arguments of a value without condition and "#" list. Commas are searched to the end of
// the value, not only to a closing parenthesis; the last argument ends at the first ")" after the
// last comma, and what follows is no part of the list. Faults: rdarg-parentheses, rdarg-many,
// rdarg-close, rdarg-seven, rdarg-invalid.
ArgumentsCut cut_arguments(View value);

// The further indices of a value without condition, whose "#" is at `mark`; at most eight.
// Faults: extarg-left, extarg-right, extarg-many, extarg-close, extarg-invalid.
ArgumentsCut cut_extra_indices(View value, std::size_t mark);

enum class ArgumentKind { set, shifted, element };

constexpr bool is_element(View argument) { return argument.starts_with('"'); }

// What an argument without leading blanks is: an element in double quotes, a lead or lag such as
// T+1, else a set.
constexpr ArgumentKind argument_kind(View argument) {
    if (is_element(argument)) return ArgumentKind::element;
    return argument.find('+') == View::npos && argument.find('-') == View::npos
               ? ArgumentKind::set
               : ArgumentKind::shifted;
}

struct Shift {
    bool guarded = false;  // a lead or lag that can lead out of its set
    bool both = false;     // with both operators
    std::size_t at = 0;    // the operator
};

// What an argument says of a lead or lag. Circular ones ("++", "--") need no guard.
Shift shift_of(View argument);

}  // namespace orvex::notation
