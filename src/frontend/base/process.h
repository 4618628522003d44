// Running other programs and reading their output.
#pragma once

#include <atomic>
#include <chrono>
#include <string>
#include <vector>

namespace orvex::frontend {

// Why a program could not be run or did not finish.
struct StartFailure {
    std::string reason;
    int error = 0;  // errno if the system refused to start it, else 0
};

struct Program {
    std::vector<std::string> words;      // its path, or a name to find on PATH; its arguments
    std::string folder = {};             // its working folder; if empty, the current one
    int input = -1;                      // descriptor of its standard input; none if negative
    std::chrono::milliseconds limit{0};  // how long it may take; 0: no limit
    // The system ends it if this program ends in a way that cannot be caught, such as by SIGKILL.
    // It is slower to start.
    bool is_tied = false;
    const std::atomic<bool>* stop = nullptr;  // ends it once this is true; null: never
};

struct Ended {
    int status = 0;            // as waitpid gives it
    bool is_too_slow = false;  // it was ended at its limit, or because of `stop`
    std::string out;           // standard output, standard error
    std::string err;
};

// Runs a program and waits for its end. Throws StartFailure, also for a signal that ends this
// program (base/interrupts.h); the started program has ended by then.
Ended run_process(Program program);

}  // namespace orvex::frontend
