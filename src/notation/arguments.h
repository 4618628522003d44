// Argument lists: the own arguments of a value such as X(I,J), and the "#" list of extra indices
// over which a field is repeated, as in X(I)#(J,K); and the kinds of arguments.
#pragma once

#include "notation/cut.h"
#include "notation/fault.h"
#include "notation/limits.h"

#include <cstddef>

namespace orvex::notation {

struct ListCut {
    Fault fault = Fault::none;
    int count = 0;  // of the arguments that could be cut
    // Where the fault is: the mark, the parenthesis or the argument.
    std::size_t place = 0;
    // The "(" of the list, or npos.
    std::size_t open = View::npos;
    // After the ")" of the list; 0 if there is none.
    std::size_t end = 0;
};

constexpr bool is_element(View argument) { return argument.starts_with('"'); }

// The argument between two delimiters as it is stored: cut to 80 characters, without blanks around
// it.
constexpr Cut kept_argument(View list, std::size_t begin, std::size_t end) {
    const View raw = trimmed(list.substr(begin, end - begin).substr(0, argument_columns));
    const View kept = left_justified(raw, argument_columns);
    const std::size_t start = begin + raw.size() - kept.size();
    return {start, start + kept.size()};
}

// An argument that opens a double quote must close it around at least one character. A lone double
// quote passes: its first character is its last.
constexpr bool is_valid_argument(View argument) {
    return !is_element(argument) || (argument.back() == '"' && argument != R"("")");
}

// The faults of a list, which depend on where the list is.
struct ListFaults {
    Fault too_many;
    Fault not_closed;
    Fault invalid;
};

// Splits the list after the parenthesis at cut.open, and calls keep(number, argument) for each
// argument, numbered from 0. Commas are searched for to the end of the text, not only up to a
// closing parenthesis; the last argument ends at the first ")" after the last comma. The limit
// applies only to the arguments before the last.
template <typename Keep>
void split_list(View list, const ListFaults& faults, ListCut& cut, Keep keep) {
    std::size_t delimiter = cut.open;
    std::size_t close = View::npos;
    std::size_t invalid = View::npos;
    const auto take = [&](std::size_t end) {
        const Cut argument = kept_argument(list, delimiter + 1, end);
        if (invalid == View::npos && !is_valid_argument(argument.in(list)))
            invalid = argument.begin;
        keep(cut.count++, argument);
    };
    for (std::size_t at = cut.open + 1; at < list.size(); ++at) {
        if (list[at] == ',') {
            if (cut.count == most_arguments) {
                cut.fault = faults.too_many;
                cut.place = at;
                return;
            }
            take(at);
            delimiter = at;
            close = View::npos;
        } else if (list[at] == ')' && close == View::npos) {
            close = at;
        }
    }
    if (close == View::npos) {
        cut.fault = faults.not_closed;
        cut.place = cut.open;
        return take(list.size());
    }
    cut.end = close + 1;
    take(close);
    if (invalid == View::npos) return;
    cut.fault = faults.invalid;
    cut.place = invalid;
}

// The own arguments of a value without condition and "#" list, each passed to keep(number,
// argument); there can be one more than a field may have. Text after the list is not included.
// Faults: argument-list-unclosed, argument-too-many, argument-after-list, argument-eighth,
// argument-quotes-invalid.
template <typename Keep>
ListCut cut_arguments(View value, Keep keep) {
    constexpr ListFaults faults = {Fault::rdarg_many, Fault::rdarg_close, Fault::rdarg_invalid};
    ListCut cut;
    cut.open = value.find('(');
    if (cut.open == View::npos) return cut;
    split_list(value, faults, cut, keep);
    if (cut.end == 0 && value.find(')') == View::npos) {
        cut.fault = Fault::rdarg_parentheses;
        cut.place = cut.open;
    } else if (cut.end > 0 && cut.count > most_arguments) {
        cut.fault = Fault::rdarg_seven;
        cut.place = cut.open;
    }
    return cut;
}

// The extra indices of a value without condition, whose "#" is at `mark`, each passed to
// keep(number, argument); at most eight.
// Faults: index-parenthesis-missing, index-list-unclosed, index-too-many, index-after-list,
// index-quotes-invalid.
template <typename Keep>
ListCut cut_extra_indices(View value, std::size_t mark, Keep keep) {
    constexpr ListFaults faults = {Fault::extarg_many, Fault::extarg_close, Fault::extarg_invalid};
    ListCut cut;
    cut.place = mark;
    cut.open = value.find('(', mark + 1);
    if (cut.open == View::npos) {
        cut.fault = Fault::extarg_left;
        return cut;
    }
    split_list(value, faults, cut, keep);
    if (cut.end == 0 && value.find(')', cut.open + 1) == View::npos) {
        cut.fault = Fault::extarg_right;
        cut.place = cut.open;
    }
    return cut;
}

enum class ArgumentKind { set, shifted, element };

// The kind of an argument without leading blanks: an element in double quotes, a lead or lag such
// as T+1, else a set.
constexpr ArgumentKind argument_kind(View argument) {
    if (is_element(argument)) return ArgumentKind::element;
    for (const char c : argument) {
        if (c == '+' || c == '-') return ArgumentKind::shifted;
    }
    return ArgumentKind::set;
}

// The operator of a lead or lag: the first "+" or the first "-", whichever comes later, or npos.
constexpr std::size_t shift_operator(View argument) {
    const std::size_t plus = find_in_short(argument, '+');
    const std::size_t minus = find_in_short(argument, '-');
    if (plus == View::npos) return minus;
    return minus == View::npos || plus > minus ? plus : minus;
}

struct Shift {
    bool guarded = false;  // a lead or lag that can leave its set
    bool both = false;     // with both operators
    std::size_t at = 0;    // the operator
};

// The lead or lag in an argument, if any. Circular ones ("++", "--") need no guard.
Shift shift_of(View argument);

}  // namespace orvex::notation
