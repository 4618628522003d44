#include "notation/statements.h"

#include "notation/arguments.h"
#include "notation/labels.h"

#include <algorithm>

namespace orvex::notation {

namespace {

View put_text(Put mode) {
    switch (mode) {
    case Put::new_line: return "PUT /,";
    case Put::continuation: return "PUT /'+',";
    case Put::same_line: break;
    }
    return "PUT";
}

// Appends to the statement what must have room as a whole.
template <typename... Pieces>
bool append_whole(Statement& statement, const Pieces&... pieces) {
    if (!statement.has_room_for(pieces...)) return false;
    statement.append(pieces...);
    return true;
}

// The statement of a value, without a condition.
bool append_value(Statement& statement, View label, View value) {
    const bool negative = value.starts_with('-');
    if (label == guard_label) {
        return negative ? append_whole(statement, "PUT /,'+','K:'(", value, ");")
                        : append_whole(statement, "PUT /,'+','K:'", value, ";");
    }
    const View name = label.empty() ? View(" ") : label;
    if (label.find('.') == View::npos) {
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

}  // namespace

void begin_name(Statement& statement, View condition, Put mode, View head, View name) {
    statement.clear();
    if (condition.empty()) {
        statement.append(put_text(mode));
    } else {
        statement.append("IF (", condition, ", ", put_text(mode));
    }
    if (head.empty() && name.empty()) return;
    statement.append("'", head, View(head.empty() ? "" : ":"), name, "'");
}

bool append_argument(Statement& statement, View argument) {
    if (is_element(argument)) {
        const View element = argument.substr(1, std::max<std::size_t>(argument.size(), 2) - 2);
        return append_whole(statement, "'.", element, "'");
    }
    const std::size_t plus = argument.find('+');
    const std::size_t minus = argument.find('-');
    if (plus == View::npos && minus == View::npos)
        return append_whole(statement, "'.'", argument, ".TL");
    const std::size_t shift = plus == View::npos    ? minus
                              : minus == View::npos ? plus
                                                    : std::max(plus, minus);
    return append_whole(statement, "'.'", argument.substr(0, shift), ".TE(", argument, ")");
}

void end_name(Statement& statement, View condition) {
    statement.append(View(condition.empty() ? ";" : " );"));
}

bool make_value(Statement& statement, View condition, View label, View value) {
    statement.clear();
    if (!condition.empty()) statement.append("IF (", condition, ",");
    if (!append_value(statement, label, value)) return false;
    if (!condition.empty()) statement.append("  );");
    return true;
}

}  // namespace orvex::notation
