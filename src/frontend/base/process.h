// Other programs, and what they say.
#pragma once

#include <string>
#include <vector>

namespace orvex::frontend {

// Why a program could not be run, or did not come to an end of its own.
struct StartFailure {
    std::string reason;
    int error = 0;  // errno where the system refused to start it, else 0
};

struct Ended {
    int status = 0;   // as waitpid gives it
    std::string out;  // standard output, standard error
    std::string err;
};

// Runs a program and waits for its end. `words` are its path, or a name to be found along PATH, and
// its arguments; `folder` is where it works, the current one where empty; `input` is the descriptor
// that it reads standard input from, none where negative. Throws StartFailure, also for a signal
// that ends this program (base/interrupts.h): the program that was started has ended then, too.
Ended run_process(std::vector<std::string> words, const std::string& folder, int input = -1);

}  // namespace orvex::frontend
