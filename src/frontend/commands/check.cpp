#include "frontend/commands/check.h"

#include "frontend/session/session.h"

namespace orvex::frontend {

int run_check(const Options& options) {
    Steps steps;
    steps.searches_folders = true;
    return run_session(options, steps);
}

}  // namespace orvex::frontend
