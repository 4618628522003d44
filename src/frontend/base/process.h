// Other programs, and what they say.
#pragma once

#include <atomic>
#include <chrono>
#include <string>
#include <vector>

namespace orvex::frontend {

// Why a program could not be run, or did not come to an end of its own.
struct StartFailure {
    std::string reason;
    int error = 0;  // errno where the system refused to start it, else 0
};

struct Program {
    std::vector<std::string> words;  // its path, or a name to be found along PATH; its arguments
    std::string folder = {};         // where it works; the current one where empty
    int input = -1;                  // descriptor of its standard input; none where negative
    std::chrono::milliseconds limit{0};  // how long it may take; 0: as long as it needs
    // The system ends it when this program ends in a way that cannot be caught, as by SIGKILL.
    // It is slower to start.
    bool is_tied = false;
    const std::atomic<bool>* stop = nullptr;  // it is ended once this is true; null: never
};

struct Ended {
    int status = 0;            // as waitpid gives it
    bool is_too_slow = false;  // it was ended at its limit, or as `stop` said
    std::string out;           // standard output, standard error
    std::string err;
};

// Runs a program and waits for its end. Throws StartFailure, also for a signal that ends this
// program (base/interrupts.h): the program that was started has ended then, too.
Ended run_process(Program program);

}  // namespace orvex::frontend
