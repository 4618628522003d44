// How a run ends before its time. These routines never return: each throws, and driver/run.cpp
// alone catches, completes the files and turns the stop into the exit status. (It also catches the
// failure of a scratch file, which unit.h throws.)
//
// After "Stops:" a header lists the messages that a routine can stop with, each by its code in
// docs/messages.md, where its text and its cause are; after "Ends the run:" those of messages on
// the console or in a file of their own. The text itself is spelt only in the routine that stops.
#pragma once

#include "text/text.h"

namespace orvex {

// The longest message: that of an undeclared variable, with a name of a whole line.
using Message = Text<355>;

// A fault in the model: the files are completed with everything translated so far, the symbol
// listing and the error report.
struct ErrorStop {
    Message message;
};

// An internal table is full, or a name too long for it: the header file is started afresh and holds
// the error report alone.
struct OverflowStop {
    Message message;
};

// The run is over; what had to be said has been said.
struct RunEnd {
    int status;
};

[[noreturn]] void pperror(View message);
[[noreturn]] void ppstop(View message);
[[noreturn]] void end_run(int status = 0);

}  // namespace orvex
