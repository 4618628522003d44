#include "input/arguments.h"

#include "notation/arguments.h"
#include "preproc.h"
#include "stop.h"

#include <cstddef>

namespace orvex {

namespace {

// Stores the arguments of a list from slot `first` on, and returns their number.
int keep_arguments(View list, const notation::ArgumentsCut& cut, int first) {
    for (int i = 0; i < cut.count; ++i) {
        arg[static_cast<std::size_t>(first + i)] =
            cut.arguments[static_cast<std::size_t>(i)].in(list);
    }
    return cut.count;
}

[[noreturn]] void stop_extarg(notation::Fault fault) {
    switch (fault) {
    case notation::Fault::extarg_left: pperror(" *** EXTARG: Left paren. following # is missing.");
    case notation::Fault::extarg_right:
        pperror(" *** EXTARG: Right paren. following # is missing.");
    case notation::Fault::extarg_many: pperror(" *** EXTARG: Too many arguments.");
    case notation::Fault::extarg_close: pperror(" *** EXTARG: Closing delimiter missing.");
    default: pperror(" *** EXTARG: Invalid argument.");
    }
}

[[noreturn]] void stop_rdarg(notation::Fault fault) {
    switch (fault) {
    case notation::Fault::rdarg_parentheses: pperror(" *** RDARG: Parethesis mismatch.");
    case notation::Fault::rdarg_many: pperror(" *** RDARG: Too many arguments.");
    case notation::Fault::rdarg_close: pperror(" *** RDARG: Closing delimiter missing.");
    case notation::Fault::rdarg_seven: pperror(" *** RDARG: More than 7 arguments detected.");
    default: pperror(" *** RDARG: Invalid argument.");
    }
}

}  // namespace

void extarg() {
    nxarg = 0;
    const int mark = field.find('#');
    if (mark == 0) return;
    const auto cut = notation::cut_extra_indices(field, static_cast<std::size_t>(mark) - 1);
    if (cut.fault != notation::Fault::none) stop_extarg(cut.fault);
    nxarg = keep_arguments(field, cut, maxarg + 1);
    field.blank_from(mark);
}

void rdarg() {
    narg = 0;
    if (!root.is_blank()) return;
    const notation::ArgumentsCut cut = notation::cut_arguments(field);
    if (cut.fault != notation::Fault::none) stop_rdarg(cut.fault);
    root = field.view().substr(0, cut.open);
    narg = keep_arguments(field, cut, 1);
}

}  // namespace orvex
