// The command line: what it asks for, or what is wrong with it.
#pragma once

#include "frontend/cli/options.h"

#include <string>

namespace orvex::frontend {

// The result of parsing a command line: options, or a text to print and an exit status.
struct ParsedCommandLine {
    Options options;
    // Print and end.
    bool done = false;
    // 0: help or version on standard output; 2: usage error.
    int status = 0;
    // Help, version, or the message of a usage error (without "error: ").
    std::string text;
    // After a usage error: what to do instead.
    std::string hint;
};

// Options may come before or after the command; --help takes precedence over every error except an
// unknown command. After a usage error the options have at least the command, if known, and the
// requested format.
ParsedCommandLine parse_command_line(int argc, char** argv);

}  // namespace orvex::frontend
