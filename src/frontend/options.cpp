#include "frontend/options.h"

#include "frontend/findings/messages.h"
#include "frontend/findings/spelling.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>
#include <unistd.h>

namespace orvex::frontend {

namespace {

struct CommandRow {
    Command command;
    const char* name;
    const char* usage;  // what follows the name
    const char* summary;
    const char* text;
};

constexpr std::array commands = {
    CommandRow{
        Command::translate, "translate", "[OPTION...] FILE...",
        "write the generator and header files of all models",
        "Translates every model of each file, and puts its generator file (MODEL.GEN) and header\n"
        "file (MODEL.HDR) into place. A file that would not change is not touched, and a model "
        "with\n"
        "an error leaves nothing new. \"-\" is standard input.\n"},
    CommandRow{Command::check, "check", "[OPTION...] FILE|FOLDER...",
               "show all errors and warnings",
               "Shows what is wrong in each file, all errors and not only the first, and leaves no "
               "output.\n"
               "A folder is searched for *.zlm files. \"-\" is standard input.\n"},
    CommandRow{Command::info, "info", "[OPTION...] FILE...", "list the names of each model",
               "Lists the names of each model with kind, dimension, description, declaration and\n"
               "references.\n"},
    CommandRow{
        Command::graph, "graph", "[OPTION...] FILE...", "draw each model as a picture",
        "Draws each model: its sectors, commodities, consumers and auxiliary variables, and what "
        "is\n"
        "made, used, demanded, endowed and taxed. For most formats the picture is a text.\n"},
    CommandRow{Command::explain, "explain", "[OPTION...] CODE...", "say what a message means",
               "Says what a message means and what to do, with a wrong and a corrected example. "
               "CODE is the\n"
               "word in brackets of the message.\n"},
    CommandRow{Command::codes, "codes", "", "list the codes of all messages",
               "Lists the codes of all messages, each with its message.\n"},
};

const CommandRow& row_of(Command command) {
    return *std::find_if(commands.begin(), commands.end(),
                         [&](const CommandRow& row) { return row.command == command; });
}

constexpr unsigned bit(Command command) { return 1U << static_cast<unsigned>(command); }

constexpr unsigned with_output = bit(Command::translate);
constexpr unsigned with_warnings = bit(Command::translate) | bit(Command::check);
constexpr unsigned with_files = with_warnings | bit(Command::info) | bit(Command::graph);
constexpr unsigned with_findings_format = with_warnings | bit(Command::info);
constexpr unsigned with_colour = with_files | bit(Command::explain);

const std::vector<std::string> format_names = {"text", "short", "json", "sarif", "github"};
const std::vector<std::string> picture_names = {"dot", "svg", "mermaid", "json", "table"};
const std::vector<std::string> colour_names = {"auto", "always", "never"};
const std::vector<std::string> level_names = {"off", "warning", "error"};

constexpr int most_jobs = 256;
constexpr int most_errors = 1'000'000;
constexpr int most_depth = 1'000'000;
constexpr int highest_counter = 9999;       // the control file gives a counter four columns
constexpr std::size_t longest_value = 255;  // of a line of the control file

// "a, b or c".
std::string listed(const std::vector<std::string>& names) {
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (i > 0) text += i + 1 == names.size() ? " or " : ", ";
        text += names[i];
    }
    return text;
}

std::string did_you_mean(std::string_view word, const std::vector<std::string>& names) {
    const std::string name = nearest(word, names);
    return name.empty() ? "" : ": did you mean `" + name + "`?";
}

// Each of these takes the value of an option, and says what is wrong with it, behind the option's
// name; nothing where all is well.
std::string take_name(const std::string& value, const std::vector<std::string>& names,
                      std::size_t& index) {
    const auto found = std::find(names.begin(), names.end(), value);
    index = static_cast<std::size_t>(found - names.begin());
    if (found != names.end()) return "";
    return "wants " + listed(names) + ", not `" + value + "`" + did_you_mean(value, names);
}

template <typename Number>
std::string take_number(const std::string& value, int least, int most, Number& number) {
    int read = 0;
    const char* const end = value.data() + value.size();
    const auto [stop, error] = std::from_chars(value.data(), end, read);
    if (error != std::errc() || stop != end || read < least || read > most) {
        return "wants a number from " + std::to_string(least) + " to " + std::to_string(most) +
               ", not `" + value + "`";
    }
    number = static_cast<Number>(read);
    return "";
}

std::string take_text(const std::string& value, std::string& text) {
    if (value.empty()) return "wants a value that is not empty";
    text = value;
    return "";
}

// A text that becomes a line of the control file.
std::string take_control_text(const std::string& value, std::string& text) {
    const auto is_control = [](char c) { return static_cast<unsigned char>(c) < ' '; };
    if (std::any_of(value.begin(), value.end(), is_control)) {
        return "wants a text without control characters";
    }
    if (value.size() > longest_value) {
        return "wants at most " + std::to_string(longest_value) + " characters";
    }
    return take_text(value, text);
}

std::string take_format(Options& options, const std::string& value) {
    std::size_t index = 0;
    if (options.command == Command::graph) {
        std::string wrong = take_name(value, picture_names, index);
        if (wrong.empty()) options.picture = value;
        return wrong;
    }
    std::string wrong = take_name(value, format_names, index);
    if (wrong.empty()) options.format = format_of(value).value_or(Format::text);
    return wrong;
}

std::string take_report(Options& options, const std::string& value) {
    const std::size_t equals = value.find('=');
    const std::string name = value.substr(0, equals);
    if (equals == std::string::npos) return "wants FORMAT=PATH, not `" + value + "`";
    std::size_t index = 0;
    std::string wrong = take_name(name, format_names, index);
    if (!wrong.empty()) return wrong;
    const std::string path = value.substr(equals + 1);
    if (path.empty()) return "wants FORMAT=PATH, not `" + value + "`";
    if (path == "-") return "writes a file: `--format " + name + "` is for the command's stream";
    for (const auto& [format, other] : options.reports) {
        if (other == path) return "is given twice for `" + path + "`";
    }
    options.reports.emplace_back(format_of(name).value_or(Format::text), path);
    return "";
}

std::vector<std::string> warning_codes() {
    std::vector<std::string> codes;
    for (const MessageEntry& entry : message_index()) {
        if (entry.ends == "finding" && entry.level == "warning") codes.push_back(entry.code);
    }
    return codes;
}

std::string take_warn(Options& options, const std::string& value) {
    const std::size_t equals = value.find('=');
    const bool for_all = equals == std::string::npos;
    std::size_t index = 0;
    std::string wrong = take_name(for_all ? value : value.substr(equals + 1), level_names, index);
    if (!wrong.empty()) return wrong;
    const std::string code = for_all ? "all" : value.substr(0, equals);
    if (!for_all) {
        const std::vector<std::string> codes = warning_codes();
        if (std::find(codes.begin(), codes.end(), code) == codes.end()) {
            const char* const known =
                find_code(code) == nullptr ? "does not know the code `" : "is for warnings, not `";
            return known + code + "`" + did_you_mean(code, codes);
        }
    }
    options.levels[code] = static_cast<Level>(index);
    return "";
}

std::string take_colour(Options& options, const std::string& value) {
    std::size_t index = 0;
    std::string wrong = take_name(value, colour_names, index);
    if (wrong.empty()) options.colour = static_cast<Colour>(index);
    return wrong;
}

struct OptionRow {
    const char* names;  // as CLI11 reads them
    const char* value;  // what its value is called; empty for a flag
    unsigned commands;
    const char* text;
    std::string (*take)(Options&, const std::string&);
};

// In the order of the help.
const OptionRow option_rows[] = {
    {"-o,--out", "DIR", with_output, "folder for the outputs (default: the current one)",
     [](Options& o, const std::string& v) { return take_text(v, o.out); }},
    {"--header", "PATH", with_output, "path of the header file, for one model",
     [](Options& o, const std::string& v) { return take_text(v, o.header); }},
    {"--depfile", "PATH", with_output, "write what the outputs depend on, for make or ninja",
     [](Options& o, const std::string& v) { return take_text(v, o.depfile); }},
    {"--json", "", bit(Command::info), "as JSON, one object for each model",
     [](Options& o, const std::string&) {
         o.json = true;
         return std::string();
     }},
    {"--format", "PICTURE", bit(Command::graph),
     "dot (default), svg (drawn by Graphviz), mermaid, json or table", take_format},
    {"--focus", "NAME", bit(Command::graph), "draw only what hangs together with this name",
     [](Options& o, const std::string& v) { return take_text(v, o.focus); }},
    {"--depth", "N", bit(Command::graph), "and lies at most N arrows from it",
     [](Options& o, const std::string& v) { return take_number(v, 0, most_depth, o.depth); }},
    {"--model", "NAME", with_files, "look at the model of this name only",
     [](Options& o, const std::string& v) { return take_text(v, o.model); }},
    {"--format", "FORMAT", with_findings_format,
     "findings as text (default), short, json, sarif or github", take_format},
    {"--report", "FORMAT=PATH", with_files, "write the findings to a file too; repeatable",
     take_report},
    {"--warn", "[CODE=]LEVEL", with_warnings,
     "off, warning or error, for one warning or for all; repeatable", take_warn},
    {"--error-on-warnings", "", with_warnings, "let a warning count as an error",
     [](Options& o, const std::string&) {
         o.error_on_warnings = true;
         return std::string();
     }},
    {"--max-errors", "N", with_files, "stop after N errors in a file (default: 20; 0: no limit)",
     [](Options& o, const std::string& v) { return take_number(v, 0, most_errors, o.max_errors); }},
    {"-j,--jobs", "N", with_warnings, "work on N files at once",
     [](Options& o, const std::string& v) { return take_number(v, 1, most_jobs, o.jobs); }},
    {"--first-model", "N", with_warnings, "number models from N + 1 (default: 0)",
     [](Options& o, const std::string& v) {
         return take_number(v, 0, highest_counter, o.first_model);
     }},
    {"--first-constraint", "N", with_warnings, "number constraints from N + 1 (default: 0)",
     [](Options& o, const std::string& v) {
         return take_number(v, 0, highest_counter, o.first_constraint);
     }},
    {"--time", "STAMP", with_warnings, "time stamp of the host's run",
     [](Options& o, const std::string& v) { return take_control_text(v, o.time); }},
    {"--put-file", "PATH", with_warnings, "path in the host's FILE statement (default: FILE.scr)",
     [](Options& o, const std::string& v) { return take_control_text(v, o.put_file); }},
    {"--stdin-filename", "NAME", with_files, "what to call standard input in messages",
     [](Options& o, const std::string& v) { return take_text(v, o.stdin_filename); }},
    {"--translator", "PATH", with_files, "the orvexpp to run (default: beside orvex, or in PATH)",
     [](Options& o, const std::string& v) { return take_text(v, o.program); }},
    {"--color", "WHEN", with_colour, "auto (default), always or never", take_colour},
    {"-q,--quiet", "", with_files, "no summary and no progress",
     [](Options& o, const std::string&) {
         o.quiet = true;
         return std::string();
     }},
};

// "--jobs" of "-j,--jobs".
std::string long_name(const OptionRow& row) {
    const std::string_view names = row.names;
    return std::string(names.substr(names.find("--")));
}

// A line of an option: its names, and its text from a fixed column on.
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
    for (const CommandRow& row : commands) {
        std::string line = std::string("  ") + row.name;
        line.resize(14, ' ');
        text += line + row.summary + "\n";
    }
    return text +
           "\nexamples:\n"
           "  orvex check model.zlm                  show all errors and warnings of a file\n"
           "  orvex translate --out build model.zlm  write build/MODEL.GEN and build/MODEL.HDR\n"
           "\n`orvex COMMAND --help` says more of a command, `orvex --version` the version.\n";
}

std::string help_of(Command command) {
    if (command == Command::none) return general_help();
    const CommandRow& row = row_of(command);
    std::string text = std::string("usage: orvex ") + row.name;
    if (*row.usage != '\0') text += std::string(" ") + row.usage;
    text += std::string("\n\n") + row.text + "\noptions:\n";
    for (const OptionRow& option : option_rows) {
        if ((option.commands & bit(command)) != 0) {
            text += option_line(option.names, option.value, option.text);
        }
    }
    text += option_line("-h,--help", "", "this text");
    text +=
        "\nexit status: 0 nothing wrong, 1 errors found, 2 wrong use, or something that cannot be\n"
        "read, written or run\n";
    return text;
}

// The words of a command line, and the options that CLI11 found in it.
struct Words {
    std::vector<std::string> plain;    // the command and its files
    std::vector<std::string> unknown;  // options that there are not
    std::vector<std::pair<std::string, std::vector<std::string>>> options;  // long name, values
    std::string wrong;                                                      // what CLI11 says
};

// Whether an option can be in the command line: to make each known to CLI11 takes a tenth of a run.
bool may_occur(const OptionRow& row, const std::vector<std::string>& arguments) {
    const std::string name = long_name(row);
    const char letter = row.names[1] == '-' ? '\0' : row.names[1];
    return std::any_of(arguments.begin(), arguments.end(), [&](const std::string& word) {
        return word.starts_with(name) ||
               (letter != '\0' && word.starts_with('-') && word.find(letter) != std::string::npos);
    });
}

// Options that stand in the table twice, for different commands, are one to CLI11.
Words split_words(const std::vector<std::string>& arguments) {
    CLI::App app;
    app.set_help_flag("");
    app.allow_extras();
    std::vector<std::pair<std::string, CLI::Option*>> known;
    for (const OptionRow& row : option_rows) {
        const std::string name = long_name(row);
        const bool is_known = std::any_of(known.begin(), known.end(),
                                          [&](const auto& other) { return other.first == name; });
        if (is_known || !may_occur(row, arguments)) continue;
        CLI::Option* const option =
            *row.value == '\0' ? app.add_flag(row.names) : app.add_option(row.names);
        option->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
        known.emplace_back(name, option);
    }
    known.emplace_back("--help", app.add_flag("-h,--help"));
    known.emplace_back("--version", app.add_flag("--version"));

    Words words;
    try {
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::ArgumentMismatch& error) {
        const std::string_view what = error.what();
        words.wrong = "`" + std::string(what.substr(0, what.find(':'))) + "` needs a value";
    } catch (const CLI::ParseError& error) {
        words.wrong = error.what();
    }
    for (const auto& [name, option] : known) {
        if (option->count() > 0) words.options.emplace_back(name, option->results());
    }
    bool options_end = false;
    for (const std::string& word : app.remaining()) {
        if (!options_end && word == "--") {
            options_end = true;
        } else if (!options_end && word.size() > 1 && word.front() == '-') {
            words.unknown.push_back(word);
        } else {
            words.plain.push_back(word);
        }
    }
    return words;
}

Command command_of(std::string_view word) {
    for (const CommandRow& row : commands) {
        if (word == row.name) return row.command;
    }
    return Command::none;
}

ParsedCommandLine print(std::string text) {
    ParsedCommandLine parsed;
    parsed.done = true;
    parsed.text = std::move(text);
    return parsed;
}

void refuse(ParsedCommandLine& parsed, std::string text, std::string hint = "") {
    if (parsed.done) return;
    parsed.done = true;
    parsed.status = 2;
    parsed.text = std::move(text);
    parsed.hint = std::move(hint);
    if (!parsed.hint.empty()) return;
    const Command command = parsed.options.command;
    parsed.hint = command == Command::none ? "`orvex --help` lists the commands"
                                           : std::string("`orvex ") + row_of(command).name +
                                                 " --help` lists the options";
}

// A wrong use is to be told in the format that is asked for, even where the rest is wrong.
Format asked_format(const std::vector<std::string>& arguments) {
    Format format = Format::text;
    for (std::size_t i = 0; i < arguments.size() && arguments[i] != "--"; ++i) {
        constexpr std::string_view name = "--format";
        std::string_view value;
        if (arguments[i] == name && i + 1 < arguments.size()) {
            value = arguments[i + 1];
        } else if (arguments[i].starts_with("--format=")) {
            value = std::string_view(arguments[i]).substr(name.size() + 1);
        }
        format = format_of(value).value_or(format);
    }
    return format;
}

void refuse_command(ParsedCommandLine& parsed, const std::string& word) {
    std::vector<std::string> names;
    names.reserve(commands.size());
    for (const CommandRow& row : commands) names.emplace_back(row.name);
    const std::string name = nearest(word, names);
    std::string hint;
    if (!name.empty()) {
        hint = "did you mean `" + name + "`?";
    } else if (::access(word.c_str(), F_OK) == 0) {
        hint = "did you mean `orvex check " + word + "`?";
    }
    refuse(parsed, "there is no command `" + word + "`", hint);
}

void refuse_option(ParsedCommandLine& parsed, const std::string& word) {
    const std::string name = word.substr(0, word.find('='));
    std::vector<std::string> names = {"--help", "--version"};
    for (const OptionRow& row : option_rows) {
        const Command command = parsed.options.command;
        if (command == Command::none || (row.commands & bit(command)) != 0) {
            names.push_back(long_name(row));
        }
    }
    const std::string near = name.starts_with("--") ? nearest(name, names) : "";
    refuse(parsed, "there is no option `" + name + "`",
           near.empty() ? "" : "did you mean `" + near + "`?");
}

void take_option(ParsedCommandLine& parsed, const std::string& name,
                 const std::vector<std::string>& values) {
    const unsigned command = bit(parsed.options.command);
    for (const OptionRow& row : option_rows) {
        if (long_name(row) != name || (row.commands & command) == 0) continue;
        for (const std::string& value : values) {
            std::string wrong = *row.value == '\0' && value != "true"
                                    ? "takes no value"
                                    : row.take(parsed.options, value);
            if (wrong.empty()) continue;
            std::string text = "`";
            text.append(name).append("` ").append(wrong);
            refuse(parsed, text);
        }
        return;
    }
    refuse(parsed, "`" + name + "` is no option of `" + row_of(parsed.options.command).name + "`");
}

// What is wrong with the command line as a whole.
void look_over(ParsedCommandLine& parsed) {
    const Options& options = parsed.options;
    if (options.command == Command::codes) {
        if (!options.files.empty()) refuse(parsed, "`codes` takes no arguments");
        return;
    }
    if (options.files.empty()) {
        refuse(parsed,
               options.command == Command::explain ? "no code is given" : "no file is given");
    }
    if (std::count(options.files.begin(), options.files.end(), "-") > 1) {
        refuse(parsed, "`-` is given twice, but standard input can be read once only");
    }
    if (options.depth >= 0 && options.focus.empty()) refuse(parsed, "`--depth` needs `--focus`");
}

bool has_option(const Words& words, std::string_view name) {
    return std::any_of(words.options.begin(), words.options.end(),
                       [&](const auto& option) { return option.first == name; });
}

// "--help" anywhere counts, even where another option would take it for its value.
bool asks_for_help(const std::vector<std::string>& arguments, const Words& words) {
    const auto end = std::find(arguments.begin(), arguments.end(), "--");
    return has_option(words, "--help") || std::any_of(arguments.begin(), end, [](const auto& word) {
               return word == "-h" || word == "--help";
           });
}

// An option such as "--model=" would take the next word for its value.
std::string option_without_value(const std::vector<std::string>& arguments) {
    for (const std::string& word : arguments) {
        if (word == "--") break;
        if (word.starts_with("--") && word.find('=') == word.size() - 1) {
            return word.substr(0, word.size() - 1);
        }
    }
    return "";
}

}  // namespace

ParsedCommandLine parse_command_line(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
    if (arguments.empty()) return print(general_help());
    Words words = split_words(arguments);
    if (!words.plain.empty() && words.plain.front() == "help") {
        words.plain.erase(words.plain.begin());
        words.options.emplace_back("--help", std::vector<std::string>());
    }
    ParsedCommandLine parsed;
    Options& options = parsed.options;
    if (!words.plain.empty()) options.command = command_of(words.plain.front());
    if (asks_for_help(arguments, words)) return print(help_of(options.command));
    if (has_option(words, "--version")) return print("orvex " ORVEX_VERSION "\n");

    if (options.command != Command::graph) options.format = asked_format(arguments);
    if (!words.plain.empty() && options.command == Command::none) {
        refuse_command(parsed, words.plain.front());
    }
    if (!words.unknown.empty()) refuse_option(parsed, words.unknown.front());
    if (!words.wrong.empty()) refuse(parsed, words.wrong);
    if (words.plain.empty()) refuse(parsed, "no command is given");
    if (const std::string name = option_without_value(arguments); !name.empty()) {
        refuse(parsed, "`" + name + "` needs a value");
    }
    if (parsed.done) return parsed;

    options.files.assign(words.plain.begin() + 1, words.plain.end());
    for (const auto& [name, values] : words.options) take_option(parsed, name, values);
    look_over(parsed);
    return parsed;
}

}  // namespace orvex::frontend
