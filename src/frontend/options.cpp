#include "frontend/options.h"

namespace orvex::frontend {

ParsedCommandLine parse_command_line(int argc, char** argv) {
    ParsedCommandLine parsed;
    parsed.options.command = Command::check;
    for (int i = 2; i < argc; ++i) parsed.options.files.emplace_back(argv[i]);
    return parsed;
}

}  // namespace orvex::frontend
