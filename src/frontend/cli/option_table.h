// The commands and their options, for the help texts and the command line.
#pragma once

#include "frontend/cli/options.h"

#include <span>
#include <string>
#include <string_view>

namespace orvex::frontend {

struct CommandRow {
    Command command;
    const char* name;
    // The usage text after the name.
    const char* usage;
    const char* summary;
    const char* text;
};

// In the order of the help.
std::span<const CommandRow> command_table();

// The row of a command, which must not be none.
const CommandRow& row_of(Command command);

struct OptionRow {
    // "-j,--jobs"
    const char* names;
    // The name of its value in the help; empty for a flag.
    const char* value;
    // The commands that have it, one bit for each.
    unsigned commands;
    const char* text;
    // Takes the value. Returns an error message to put after the option's name; empty if all is
    // well.
    std::string (*take)(Options&, const std::string&);
};

// In the order of the help. An option that differs between commands has several rows.
std::span<const OptionRow> option_table();

bool has_option(Command command, const OptionRow& row);

// Is the value allowed for the command's --format or, without a command, for that of findings?
bool is_format(Command command, std::string_view value);

// "--jobs" of "-j,--jobs".
std::string long_name(const OptionRow& row);

}  // namespace orvex::frontend
