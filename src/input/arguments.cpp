#include "input/arguments.h"

#include "input/textops.h"
#include "preproc.h"
#include "stop.h"

#include <cstddef>

namespace orvex {

namespace {

struct Messages {
    View too_many;
    View not_closed;
    View invalid;
};

Argument& slot(int number) { return arg[static_cast<std::size_t>(number)]; }

// Stores the comma-separated arguments behind the parenthesis at `open` from slot `first` on and
// counts them. Commas are searched to the end of the list's text, not only to a closing
// parenthesis; the last argument ends at the first ")" behind the last comma, and only the ones
// before it are limited here.
void split_list(const Line& list, int open, int first, int& count, const Messages& messages) {
    int delimiter = open;
    int close = 0;
    for (int position = open + 1; position <= list.length(); ++position) {
        if (list[position] == ',') {
            if (++count > maxarg) pperror(messages.too_many);
            slot(first + count - 1) = list.slice(delimiter + 1, position - 1);
            delimiter = position;
            close = 0;
        } else if (list[position] == ')' && close == 0) {
            close = position;
        }
    }
    if (close == 0) pperror(messages.not_closed);
    ++count;
    slot(first + count - 1) = list.slice(delimiter + 1, close - 1);
}

// An argument that opens a double quote must close it around at least one character. A lone double
// quote passes: its first character is its last.
void check_arguments(int first, int count, const Messages& messages) {
    for (int number = first; number < first + count; ++number) {
        Argument& argument = slot(number);
        lftjst(argument);
        const View text = argument;
        if (text.empty() || text.front() != '"') continue;
        if (text.back() != '"' || text == R"("")") pperror(messages.invalid);
    }
}

}  // namespace

void extarg() {
    static constexpr Messages messages = {" *** EXTARG: Too many arguments.",
                                          " *** EXTARG: Closing delimiter missing.",
                                          " *** EXTARG: Invalid argument."};
    nxarg = 0;
    const int mark = field.find('#');
    if (mark == 0) return;
    const Line list = field.from(mark + 1);
    field.blank_from(mark);

    const int open = list.find('(');
    if (open == 0) pperror(" *** EXTARG: Left paren. following # is missing.");
    if (list.find(')', open + 1) == 0) pperror(" *** EXTARG: Right paren. following # is missing.");
    split_list(list, open, maxarg + 1, nxarg, messages);
    check_arguments(maxarg + 1, nxarg, messages);
}

void rdarg() {
    static constexpr Messages messages = {" *** RDARG: Too many arguments.",
                                          " *** RDARG: Closing delimiter missing.",
                                          " *** RDARG: Invalid argument."};
    narg = 0;
    if (!root.is_blank()) return;
    const int open = field.find('(');
    if (open == 0) {
        root = field;
        return;
    }
    root = field.slice(1, open - 1);
    if (!field.contains(')')) pperror(" *** RDARG: Parethesis mismatch.");
    split_list(field, open, 1, narg, messages);
    if (narg > maxarg) pperror(" *** RDARG: More than 7 arguments detected.");
    check_arguments(1, narg, messages);
}

}  // namespace orvex
