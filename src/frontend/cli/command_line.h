// The command line: what it asks for, or what is wrong with it.
#pragma once

#include "frontend/cli/options.h"

#include <string>

namespace orvex::frontend {

// What a command line comes to: options, or a text to print and the status to end with.
struct ParsedCommandLine {
    Options options;
    // Print and end.
    bool done = false;
    // 0: help or version on standard output; 2: wrong use.
    int status = 0;
    // Help, version, or the message of a wrong use (without "error: ").
    std::string text;
    // Of a wrong use: what to do instead.
    std::string hint;
};

// Options may come before or after the command; --help wins over every error but an unknown
// command. Of a wrong use the options say at least the command, where that is known, and the format
// that is asked for.
ParsedCommandLine parse_command_line(int argc, char** argv);

}  // namespace orvex::frontend
