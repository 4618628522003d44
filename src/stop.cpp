#include "stop.h"

namespace orvex {

void pperror(View message) { throw ErrorStop{message}; }

void ppstop(View message) { throw OverflowStop{message}; }

void end_run(int status) { throw RunEnd{status}; }

}  // namespace orvex
