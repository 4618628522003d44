// What a value looks like to the host, which accepts a number, a name with its sets, or an
// expression in parentheses.
#pragma once

#include <cstddef>
#include <string_view>

namespace orvex::frontend {

enum class ValueForm {
    good,
    expression,   // without parentheses: "60*2"
    unfinished,   // ends with an operator: "1+"
    several,      // two values: "1 P 2"
    not_number,   // begins like a number: "1.2.3"
    not_value,    // neither a number nor a name: "3O"
    quoted,       // "1" with its quotes
    comma,        // "1,5"
    semicolon,    // after a value: "1;"
    brackets,     // instead of parentheses: "Y[G]"
    parentheses,  // mismatched
};

struct ValueShape {
    ValueForm form = ValueForm::good;
    bool compares = false;  // has a relation or a logical operator
    // The second of several values: its start, and its end at the next blank.
    std::size_t second = 0;
    std::size_t second_end = 0;
};

// The shape of a value, given in capitals and without surrounding blanks. Text in parentheses
// belongs to the host, and anything that contains "%X%" may be valid. A value that begins with "-"
// gets parentheses, so it may be an expression.
ValueShape shape_of_value(std::string_view value);

}  // namespace orvex::frontend
