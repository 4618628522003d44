#include "frontend/cli/help.h"

#include "frontend/cli/option_table.h"

#include <cstddef>
#include <string_view>

namespace orvex::frontend {

namespace {

// A line for an option: its names, and its text starting at a fixed column.
std::string option_line(std::string_view names, std::string_view value, std::string_view text) {
    constexpr std::size_t text_column = 28;
    std::string line = "  ";
    const std::size_t comma = names.find(',');
    if (comma == std::string_view::npos) {
        line.append(4, ' ').append(names);
    } else {
        line.append(names.substr(0, comma)).append(", ").append(names.substr(comma + 1));
    }
    if (!value.empty()) line.append(" ").append(value);
    if (line.size() + 2 > text_column) {
        line += "\n";
        line.append(text_column, ' ');
    } else {
        line.resize(text_column, ' ');
    }
    return line.append(text) + "\n";
}

std::string general_help() {
    std::string text =
        "orvex checks and translates ORVEX models and shows what is in them\n"
        "\nusage: orvex COMMAND [OPTION...] FILE...\n\ncommands:\n";
    for (const CommandRow& row : command_table()) {
        std::string line = std::string("  ") + row.name;
        line.resize(14, ' ');
        text += line + row.summary + "\n";
    }
    return text +
           "\nexamples:\n"
           "  orvex check model.zlm                  show all errors and warnings of a file\n"
           "  orvex translate --out build model.zlm  write build/MODEL.GEN and build/MODEL.HDR\n"
           "\n`orvex COMMAND --help` shows the options of a command, `orvex --version` the "
           "version.\n";
}

}  // namespace

std::string help_of(Command command) {
    if (command == Command::none) return general_help();
    const CommandRow& row = row_of(command);
    std::string text = std::string("usage: orvex ") + row.name;
    if (*row.usage != '\0') text += std::string(" ") + row.usage;
    text += std::string("\n\n") + row.text + "\noptions:\n";
    for (const OptionRow& option : option_table()) {
        if (has_option(command, option)) {
            text += option_line(option.names, option.value, option.text);
        }
    }
    text += option_line("-h,--help", "", "show this help");
    text +=
        "\nexit status: 0 no errors; 1 errors found; 2 a usage error, or something that cannot be\n"
        "read, written or run\n";
    return text;
}

}  // namespace orvex::frontend
