// The command line: what it asks for, or what is wrong with it.
#pragma once

#include "frontend/cli/options.h"

#include <string>

namespace orvex::frontend {

// What a command line comes to: options, or a text to print and the status to end with.
struct ParsedCommandLine {
    Options options;
    bool done = false;  // print and end
    int status = 0;     // 0: help or version on standard output; 2: wrong use
    std::string text;   // help, version, or the message of a wrong use (without "error: ")
    std::string hint;   // of a wrong use: what to do instead
};

// Options may stand before and after the command; --help wins over all that is wrong. Of a wrong
// use the options say at least the command, where that is known, and the format that is asked for.
ParsedCommandLine parse_command_line(int argc, char** argv);

}  // namespace orvex::frontend
