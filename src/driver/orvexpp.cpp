// The program: translates the input that the run control file, its one argument, names.
#include "driver/run.h"

#include <csignal>

int main(int argc, char** argv) {
    // An output whose reader has gone, or that grows too large, is a failed write, not the run's
    // end.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    return orvex::run(argc > 1 ? argv[1] : "");
}
