// The PUT statements that print one field, and whether they fit the columns of a statement.
#pragma once

#include "notation/characters.h"
#include "notation/limits.h"
#include "text.h"

namespace orvex::notation {

using Statement = Text<record_columns>;

// How a statement for a name begins.
enum class Put {
    new_line,      // "PUT /,"
    continuation,  // "PUT /'+',"
    same_line,     // "PUT"
};

// Begins the statement of a name: its condition, if there is one, and 'LABEL:NAME', or what there
// is of it. What has no room is cut.
void begin_name(Statement& statement, View condition, Put mode, View head, View name);

// Appends what prints one argument when the generator file runs: a quoted element as it stands, the
// element of a set by its text, a lead or lag by the text of the shifted element. False, with the
// statement as it was, where it has no room.
bool append_argument(Statement& statement, View argument);

// Ends the statement of a name.
void end_name(Statement& statement, View condition);

// Makes the statement of a field with a value. False, with the statement in part, where it has no
// room.
bool make_value(Statement& statement, View condition, View label, View value);

// Does the value begin like a number?
constexpr bool is_numeric(View value) {
    if (value.empty()) return false;
    const char first = value.front();
    return is_digit(first) || first == '.' || first == '+' || first == '-';
}

}  // namespace orvex::notation
