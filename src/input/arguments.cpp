#include "input/arguments.h"

#include "notation/arguments.h"
#include "preproc.h"
#include "stop.h"

#include <cstddef>

namespace orvex {

namespace {

// Stores the arguments of a list of `field` from slot `first` on.
auto keep_from(int first) {
    Argument* const slots = &arg[static_cast<std::size_t>(first)];
    return [slots, list = field.view()](int number, notation::Cut argument) {
        slots[number] = argument.in(list);
    };
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
    const notation::ListCut cut = notation::cut_extra_indices(
        field, static_cast<std::size_t>(mark) - 1, keep_from(maxarg + 1));
    if (cut.fault != notation::Fault::none) stop_extarg(cut.fault);
    nxarg = cut.count;
    field.blank_from(mark);
}

void rdarg() {
    narg = 0;
    if (!root.is_blank()) return;
    const notation::ListCut cut = notation::cut_arguments(field, keep_from(1));
    if (cut.fault != notation::Fault::none) stop_rdarg(cut.fault);
    root = field.view().substr(0, cut.open);
    narg = cut.count;
}

}  // namespace orvex
