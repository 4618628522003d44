#include "notation/arguments.h"

namespace orvex::notation {

Shift shift_of(View argument) {
    Shift shift;
    if (argument_kind(argument) != ArgumentKind::shifted) return shift;
    const bool is_circular = argument.find("++") != View::npos || argument.find("--") != View::npos;
    if (is_circular) return shift;
    shift.guarded = true;
    shift.both = argument.find('+') != View::npos && argument.find('-') != View::npos;
    shift.at = shift_operator(argument);
    return shift;
}

}  // namespace orvex::notation
