// The program: translates the input named in the run control file, which is its one argument.
#include "driver/run.h"

#include <csignal>

int main(int argc, char** argv) {
    // If the reader of an output has gone, or the output grows too large, only the write fails: the
    // run is not killed.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    return orvex::run(argc > 1 ? argv[1] : "");
}
