// The statements of the generator file for one field: the one that prints it, and the loops and
// guards around it. Made in a text longer than a statement, they show how many columns they would
// need.
#pragma once

#include "notation/arguments.h"
#include "notation/labels.h"
#include "notation/limits.h"
#include "text/characters.h"
#include "text/text.h"

#include <algorithm>
#include <cstddef>

namespace orvex::notation {

using Statement = Text<record_columns>;

// The columns before a statement at this number of open levels, at most all of them.
constexpr int indent_of(int levels) { return std::min(2 * levels, record_columns); }

// How a statement for a name begins.
enum class Put {
    new_line,      // "PUT /,"
    continuation,  // "PUT /'+',"
    same_line,     // "PUT"
};

constexpr View put_text(Put mode) {
    switch (mode) {
    case Put::new_line: return "PUT /,";
    case Put::continuation: return "PUT /'+',";
    case Put::same_line: break;
    }
    return "PUT";
}

// Appends pieces to the statement only if all of them fit.
template <int size, typename... Pieces>
bool append_whole(Text<size>& statement, const Pieces&... pieces) {
    if (!statement.has_room_for(pieces...)) return false;
    statement.append(pieces...);
    return true;
}

// The statement of a value, without a condition.
template <int size>
bool append_value(Text<size>& statement, View label, View value) {
    const bool negative = value.starts_with('-');
    if (label == guard_label) {
        return negative ? append_whole(statement, "PUT /,'+','K:'(", value, ");")
                        : append_whole(statement, "PUT /,'+','K:'", value, ";");
    }
    const View name = label.empty() ? View(" ") : label;
    if (find_in_short(label, '.') == View::npos) {
        return negative ? append_whole(statement, "PUT /,'+','", name, ":'(", value, ");")
                        : append_whole(statement, "PUT /,'+", name, ":'",
                                       value.empty() ? View(" ") : value, ";");
    }
    const std::size_t open = label.find('(');
    if (open == View::npos || label.find(element_label) == View::npos)
        return append_whole(statement, "PUT /,'+',", name, ",':'", value, ";");
    return append_whole(statement, "PUT /,'+',", label.substr(0, open), ",'", label.substr(open),
                        "'':'", value, ";");
}

// Begins the statement of a name: its condition, if any, and 'LABEL:NAME', or the part of it that
// exists. Text that does not fit is cut.
template <int size>
void begin_name(Text<size>& statement, View condition, Put mode, View head, View name) {
    statement.clear();
    if (condition.empty()) {
        statement.append(put_text(mode));
    } else {
        statement.append("IF (", condition, ", ", put_text(mode));
    }
    if (head.empty() && name.empty()) return;
    statement.append("'", head, View(head.empty() ? "" : ":"), name, "'");
}

// Appends the code that prints one argument when the generator file runs: a quoted element itself,
// the element of a set by its text, a lead or lag by the text of the shifted element. Returns
// false, with the statement unchanged, if there is no room.
template <int size>
bool append_argument(Text<size>& statement, View argument) {
    if (is_element(argument)) {
        const View element = argument.substr(1, std::max<std::size_t>(argument.size(), 2) - 2);
        return append_whole(statement, "'.", element, "'");
    }
    const std::size_t shift = shift_operator(argument);
    if (shift == View::npos) return append_whole(statement, "'.'", argument, ".TL");
    return append_whole(statement, "'.'", argument.substr(0, shift), ".TE(", argument, ")");
}

// Ends the statement of a name.
template <int size>
void end_name(Text<size>& statement, View condition) {
    statement.append(View(condition.empty() ? ";" : " );"));
}

// Makes the statement of a field with a value. Returns false, with an unfinished statement, if
// there is no room.
template <int size>
bool make_value(Text<size>& statement, View condition, View label, View value) {
    statement.clear();
    if (!condition.empty()) statement.append("IF (", condition, ",");
    if (!append_value(statement, label, value)) return false;
    if (!condition.empty()) statement.append("  );");
    return true;
}

// The statements that open loops and guards. Text that does not fit is cut.

// The loop over the sets "(S,T" (the statement adds the parenthesis), for which the condition
// holds.
template <int size>
void make_loop(Text<size>& statement, View sets, View condition) {
    statement.clear();
    statement.append("LOOP(", sets, View(condition.empty() ? ")" : ")$"), condition, ",");
}

// The loop of a label that is an element of a set.
template <int size>
void make_label_loop(Text<size>& statement, View set) {
    statement.clear();
    statement.append("LOOP(", set, ",");
}

// The guards: the statements after them run only if the condition holds, the value is not zero, or
// the lead or lag, such as "+1", stays within its set.
template <int size>
void make_condition(Text<size>& statement, View condition) {
    statement.clear();
    statement.append("IF (", condition, ",");
}
template <int size>
void make_guard(Text<size>& statement, View value) {
    statement.clear();
    statement.append("IF(ABS(", value, ") GT ORVEPS, ");
}
template <int size>
void make_shift_guard(Text<size>& statement, View set, View shift) {
    statement.clear();
    statement.append("IF ( ( (ORD(", set, ")", shift, " GE 1) * (ORD(", set, ")", shift,
                     " LE CARD(", set, " )) ),");
}

// The condition of a report variable in the artificial equation, if it has one.
template <int size>
void make_report_condition(Text<size>& text, View condition) {
    text.clear();
    text.append("((", condition, ")$(ORVREPORT))");
}

// The beginning of the term for a name with the sets "(S,T" in the artificial equation.
template <int size>
void make_sum(Text<size>& text, View sets, View condition) {
    text.clear();
    text.append("+SUM(", sets, ")", View(condition.empty() ? "" : "$"), condition, ",");
}

// The declaration of a constraint's equation, such as "EQ_001(S)".
template <int size>
void make_equation(Text<size>& text, View equation, View variable) {
    text.clear();
    text.append("EQUATION ", equation, " Complementary equation(s) for ", variable, ";");
}

// The condition of a field that is written only if its value is not zero. Text that does not fit is
// cut.
Statement implicit_condition(View value);

// Does the value begin like a number?
constexpr bool is_numeric(View value) {
    if (value.empty()) return false;
    const char first = value.front();
    return is_digit(first) || first == '.' || first == '+' || first == '-';
}

}  // namespace orvex::notation
