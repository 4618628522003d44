// How a run ends early. These routines never return: each throws, and only driver/run.cpp catches,
// completes the files and turns the stop into the exit status. (It also catches the failure of a
// scratch file, which unit.h throws.)
//
// After "Stops:" a header lists the messages that a routine can stop with, each by its code in
// docs/messages.md, which gives its text and cause; after "Ends the run:" those printed on the
// console or to a file of their own. The text itself is spelt only in the routine that stops.
#pragma once

#include "text/text.h"

namespace orvex {

// The longest message: that for an undeclared variable whose name fills a line.
using Message = Text<355>;

// A fault in the model: the files are completed with everything translated so far, the symbol
// listing and the error report.
struct ErrorStop {
    Message message;
};

// An internal table is full, or a name is too long for it: the header file is started again and
// contains only the error report.
struct OverflowStop {
    Message message;
};

// The run is over; every message has been printed.
struct RunEnd {
    int status;
};

[[noreturn]] void pperror(View message);
[[noreturn]] void ppstop(View message);
[[noreturn]] void end_run(int status = 0);

}  // namespace orvex
