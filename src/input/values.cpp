#include "input/values.h"

#include "codegen/writer.h"
#include "preproc.h"
#include "stop.h"
#include "symbols/table.h"

#include <algorithm>
#include <cstddef>

namespace orvex {

namespace {

struct HeadType {
    View head;
    char symtyp;
};

// The type under which a name is registered, by the head of its field.
constexpr HeadType head_types[] = {
    {"$PROD", 'A'}, {"$DEMAND", 'C'}, {"O", 'P'}, {"I", 'P'}, {"D", 'P'}, {"E", 'P'},
    {"A", 'C'},     {"N", 'V'},       {"R", 'V'}, {"S", 'D'}, {"V", 'R'}, {"W", 'C'},
};

View put_text(Put mode) {
    switch (mode) {
    case Put::new_line: return "PUT /,";
    case Put::continuation: return "PUT /'+',";
    case Put::same_line: break;
    }
    return "PUT";
}

// Appends to the statement what must have room as a whole; else stops with the message.
template <typename... Pieces>
void append_whole(View message, const Pieces&... pieces) {
    if (!output.has_room_for(pieces...)) pperror(message);
    output.append(pieces...);
}

// 'LABEL:NAME', or what there is of it.
void append_head(View head) {
    if (head.empty() && root.is_blank()) return;
    output.append("'", head, View(head.empty() ? "" : ":"), root, "'");
}

// What prints one argument when the generator file runs: a quoted element as it stands, the element
// of a set by its text, a lead or lag by the text of the shifted element.
void append_argument(const Argument& argument) {
    constexpr View too_long = " *** CHRFLD: statement exceeds 255 characters.";
    if (argument[1] == '"')
        return append_whole(too_long, "'.", argument.slice(2, argument.length() - 1), "'");
    const int shift = std::max(argument.find('+'), argument.find('-'));
    if (shift == 0) return append_whole(too_long, "'.'", argument, ".TL");
    append_whole(too_long, "'.'", argument.slice(1, shift - 1), ".TE(", argument, ")");
}

// The statement of numfld, without a condition.
void append_value() {
    constexpr View too_long = " *** NUMFLD: statement exceeds 255 characters.";
    const View value = field;
    const bool negative = !value.empty() && value.front() == '-';
    if (label == "K") {
        return negative ? append_whole(too_long, "PUT /,'+','K:'(", value, ");")
                        : append_whole(too_long, "PUT /,'+','K:'", value, ";");
    }
    const View name = label.is_blank() ? View(" ") : label.view();
    if (!label.contains('.')) {
        return negative ? append_whole(too_long, "PUT /,'+','", name, ":'(", value, ");")
                        : append_whole(too_long, "PUT /,'+", name, ":'",
                                       value.empty() ? View(" ") : value, ";");
    }
    const int open = label.find('(');
    if (open == 0 || !label.contains(".TL"))
        return append_whole(too_long, "PUT /,'+',", name, ",':'", value, ";");
    append_whole(too_long, "PUT /,'+',", label.slice(1, open - 1), ",'", label.from(open), "'':'",
                 value, ";");
}

// Does the text begin like a number?
bool numric(View text) {
    if (text.empty()) return false;
    const char first = text.front();
    return (first >= '0' && first <= '9') || first == '.' || first == '+' || first == '-';
}

}  // namespace

void chrfld(View text, Put mode) {
    const View head = trimmed(text);
    const bool conditional = !condtn.is_blank();
    output.clear();
    if (conditional) {
        output.append("IF (", condtn, ", ", put_text(mode));
    } else {
        output.append(put_text(mode));
    }
    append_head(head);
    for (int i = 1; i <= narg; ++i) append_argument(arg[static_cast<std::size_t>(i)]);
    output.append(View(conditional ? " );" : ";"));
    wrtzlm();
    for (const HeadType& row : head_types) {
        if (head == row.head) addsym(row.symtyp);
    }
}

void numfld() {
    output.clear();
    const bool conditional = !condtn.is_blank();
    if (conditional) output.append("IF (", condtn, ",");
    append_value();
    if (conditional) output.append("  );");
    wrtzlm();
    if (!numric(field)) addsym('D');
}

}  // namespace orvex
