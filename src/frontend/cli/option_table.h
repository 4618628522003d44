// The commands and their options: what the help shows and the command line may hold.
#pragma once

#include "frontend/cli/options.h"

#include <span>
#include <string>
#include <string_view>

namespace orvex::frontend {

struct CommandRow {
    Command command;
    const char* name;
    // What follows the name.
    const char* usage;
    const char* summary;
    const char* text;
};

// In the order of the help.
std::span<const CommandRow> command_table();

// The row of a command other than none.
const CommandRow& row_of(Command command);

struct OptionRow {
    // "-j,--jobs"
    const char* names;
    // What its value is called; empty for a flag.
    const char* value;
    // Those that have it, a bit for each.
    unsigned commands;
    const char* text;
    // Takes the value, and says what is wrong with it, after the option's name; nothing where all
    // is well.
    std::string (*take)(Options&, const std::string&);
};

// In the order of the help. An option that is not the same for all its commands has a row for each
// kind.
std::span<const OptionRow> option_table();

bool has_option(Command command, const OptionRow& row);

// Whether --format takes the value: that of the command or, without one, that of findings.
bool is_format(Command command, std::string_view value);

// "--jobs" of "-j,--jobs".
std::string long_name(const OptionRow& row);

}  // namespace orvex::frontend
