#include "input/values.h"

#include "codegen/writer.h"
#include "preproc.h"
#include "stop.h"
#include "symbols/table.h"

namespace orvex {

namespace {

// A value's statement before it is known to fit: label, value and what stands around them.
constexpr int longest_statement = maxline + 50;
using Statement = Text<longest_statement>;

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

// 'LABEL:NAME', or what there is of it.
Line head_item(View head) {
    if (head.empty() && root.is_blank()) return {};
    if (head.empty()) return joined<maxline>({"'", root, "'"});
    return joined<maxline>({"'", head, ":", root, "'"});
}

// What prints one argument when the generator file runs: a quoted element as it stands, the element of
// a set by its text, a lead or lag by the text of the shifted element.
Line argument_item(View argument) {
    if (!argument.empty() && argument.front() == '"') {
        const View element = argument.size() < 2 ? View() : argument.substr(1, argument.size() - 2);
        return joined<maxline>({"'.", element, "'"});
    }
    const auto plus = argument.find('+') + 1;  // 0 when there is none
    const auto minus = argument.find('-') + 1;
    const auto shift = std::max(plus, minus);
    if (shift == 0) return joined<maxline>({"'.'", argument, ".TL"});
    return joined<maxline>({"'.'", argument.substr(0, shift - 1), ".TE(", argument, ")"});
}

// The statement of numfld, without a condition.
Statement value_statement() {
    const View value = field;
    const bool negative = !value.empty() && value.front() == '-';
    if (label == "K") {
        return negative ? joined<longest_statement>({"PUT /,'+','K:'(", value, ");"})
                        : joined<longest_statement>({"PUT /,'+','K:'", value, ";"});
    }
    const View name = label.is_blank() ? View(" ") : label.view();
    if (!label.contains('.')) {
        return negative ? joined<longest_statement>({"PUT /,'+','", name, ":'(", value, ");"})
                        : joined<longest_statement>(
                              {"PUT /,'+", name, ":'", value.empty() ? " " : value, ";"});
    }
    const int open = label.find('(');
    if (open == 0 || !label.contains(".TL"))
        return joined<longest_statement>({"PUT /,'+',", name, ",':'", value, ";"});
    return joined<longest_statement>(
        {"PUT /,'+',", label.slice(1, open - 1), ",'", label.from(open), "'':'", value, ";"});
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
    output = conditional ? joined<maxline>({"IF (", condtn, ", ", put_text(mode)})
                         : Line(put_text(mode));
    output.append(head_item(head));
    for (int i = 1; i <= narg; ++i) {
        const Line item = argument_item(arg[static_cast<std::size_t>(i)]);
        if (!output.has_room_for(item)) pperror(" *** CHRFLD: statement exceeds 255 characters.");
        output.append(item);
    }
    output.append(conditional ? " );" : ";");
    wrtzlm();
    for (const HeadType& row : head_types) {
        if (head == row.head) addsym(row.symtyp);
    }
}

void numfld() {
    output.clear();
    if (!condtn.is_blank()) output = joined<maxline>({"IF (", condtn, ","});
    const Statement statement = value_statement();
    if (!output.has_room_for(statement)) pperror(" *** NUMFLD: statement exceeds 255 characters.");
    output.append(statement);
    if (!condtn.is_blank()) output = joined<maxline>({output, "  );"});
    wrtzlm();
    if (!numric(field)) addsym('D');
}

}  // namespace orvex
