// What a value looks like to the host, which takes a number, a name with its sets, or an expression
// in parentheses.
#pragma once

#include <cstddef>
#include <string_view>

namespace orvex::frontend {

enum class ValueForm {
    good,
    expression,   // without parentheses: "60*2"
    unfinished,   // ends with an operator: "1+"
    several,      // two values: "1 P 2"
    not_number,   // begins like one: "1.2.3"
    not_value,    // neither a number nor a name: "3O"
    quoted,       // "1" with its quotes
    comma,        // "1,5"
    semicolon,    // after a value: "1;"
    brackets,     // for parentheses: "Y[G]"
    parentheses,  // that do not match
};

struct ValueShape {
    ValueForm form = ValueForm::good;
    bool compares = false;  // has a relation or a logical operator
    // The second one of several values, up to the next blank.
    std::size_t second = 0;
    std::size_t second_end = 0;
};

// The shape of a value, in capitals and without blanks around it. What is in parentheses is the
// host's own, and anything may be right that has "%X%" in it. A value that begins with "-" gets
// parentheses, so it may be an expression.
ValueShape shape_of_value(std::string_view value);

}  // namespace orvex::frontend
