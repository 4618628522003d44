#include "frontend/cli/command_line.h"

#include "frontend/base/spelling.h"
#include "frontend/cli/help.h"
#include "frontend/cli/option_table.h"
#include "frontend/expansion/data_files.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstddef>
#include <string_view>
#include <unistd.h>
#include <utility>
#include <vector>

namespace orvex::frontend {

namespace {

// The words of a command line, and the options that CLI11 found in it.
struct Words {
    std::vector<std::string> plain;    // the command and its files
    std::vector<std::string> unknown;  // unknown options
    std::vector<std::pair<std::string, std::vector<std::string>>> options;  // long name, values
    std::string wrong;                                                      // CLI11's error message
};

// Whether an option may be on the command line. Registering all of them with CLI11 takes a tenth of
// a run.
bool may_occur(const OptionRow& row, const std::vector<std::string>& arguments) {
    const std::string name = long_name(row);
    const char letter = row.names[1] == '-' ? '\0' : row.names[1];
    return std::any_of(arguments.begin(), arguments.end(), [&](const std::string& word) {
        return word.starts_with(name) ||
               (letter != '\0' && word.starts_with('-') && word.find(letter) != std::string::npos);
    });
}

using KnownOptions = std::vector<std::pair<std::string, CLI::Option*>>;

// Options that are in the table twice, for different commands, are one option for CLI11.
KnownOptions add_options(CLI::App& app, const std::vector<std::string>& arguments) {
    KnownOptions known;
    for (const OptionRow& row : option_table()) {
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
    return known;
}

// Splits the remaining words into unknown options and plain words.
void sort_rest(const std::vector<std::string>& rest, Words& words) {
    bool options_end = false;
    for (const std::string& word : rest) {
        if (!options_end && word == "--") {
            options_end = true;
        } else if (!options_end && word.size() > 1 && word.front() == '-') {
            words.unknown.push_back(word);
        } else {
            words.plain.push_back(word);
        }
    }
}

Words split_words(const std::vector<std::string>& arguments) {
    CLI::App app;
    app.set_help_flag("");
    app.allow_extras();
    const KnownOptions known = add_options(app, arguments);
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
    sort_rest(app.remaining(), words);
    return words;
}

Command command_of(std::string_view word) {
    for (const CommandRow& row : command_table()) {
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

// The values of an option, even if the rest of the command line is wrong.
std::vector<std::string> asked_values(const std::vector<std::string>& arguments,
                                      const std::string& name) {
    std::vector<std::string> values;
    for (std::size_t i = 0; i < arguments.size() && arguments[i] != "--"; ++i) {
        if (arguments[i] == name && i + 1 < arguments.size()) {
            values.push_back(arguments[i + 1]);
        } else if (arguments[i].starts_with(name + "=")) {
            values.push_back(arguments[i].substr(name.size() + 1));
        }
    }
    return values;
}

// Usage errors are reported in the requested format.
Format asked_format(const std::vector<std::string>& arguments) {
    Format format = Format::text;
    for (const std::string& value : asked_values(arguments, "--format"))
        format = format_of(value).value_or(format);
    return format;
}

// Usage errors also go to the files of --report. Any word may be an input file, and input files
// must not be overwritten.
void take_reports(const std::vector<std::string>& arguments, Options& options) {
    constexpr std::string_view name = "--report";
    options.files = arguments;
    options.reports.clear();
    for (const OptionRow& row : option_table()) {
        if (long_name(row) != name) continue;
        for (const std::string& value : asked_values(arguments, std::string(name)))
            row.take(options, value);
    }
}

void refuse_command(ParsedCommandLine& parsed, const std::string& word) {
    std::vector<std::string> names;
    names.reserve(command_table().size());
    for (const CommandRow& row : command_table()) names.emplace_back(row.name);
    const std::string name = nearest_word(word, names);
    std::string hint;
    if (!name.empty()) {
        hint = "did you mean `" + name + "`?";
    } else if (::access(word.c_str(), F_OK) == 0) {
        hint = "did you mean `orvex check " + word + "`?";
    }
    refuse(parsed, "unknown command `" + word + "`", hint);
}

void refuse_option(ParsedCommandLine& parsed, const std::string& word) {
    const std::string name = word.substr(0, word.find('='));
    std::vector<std::string> names = {"--help", "--version"};
    for (const OptionRow& row : option_table()) {
        const Command command = parsed.options.command;
        if (command == Command::none || has_option(command, row)) {
            names.push_back(long_name(row));
        }
    }
    const std::string near = name.starts_with("--") ? nearest_word(name, names) : "";
    std::string hint;
    if (const std::string format = name.substr(std::min<std::size_t>(name.size(), 2));
        is_format(parsed.options.command, format)) {
        hint = "write `--format " + format + "`";
    } else if (!near.empty()) {
        hint = "did you mean `" + near + "`?";
    }
    refuse(parsed, "unknown option `" + name + "`", hint);
}

void take_option(ParsedCommandLine& parsed, const std::string& name,
                 const std::vector<std::string>& values) {
    const Command command = parsed.options.command;
    for (const OptionRow& row : option_table()) {
        if (long_name(row) != name || !has_option(command, row)) continue;
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
    refuse(parsed,
           "`" + name + "` is not an option of `" + row_of(parsed.options.command).name + "`");
}

// With "--data a.json b.csv" only the first file belongs to the option: further data files are
// recognised by their extensions.
void move_data_files(Options& options) {
    const auto data =
        std::stable_partition(options.files.begin(), options.files.end(),
                              [](const std::string& path) { return !is_data_path(path); });
    options.data.insert(options.data.end(), data, options.files.end());
    options.files.erase(data, options.files.end());
}

// Finds errors of the command line as a whole.
void check_command_line(ParsedCommandLine& parsed) {
    const Options& options = parsed.options;
    const bool serves = options.command == Command::lsp && !options.self_check;
    if (options.command == Command::codes || serves) {
        const std::string name = row_of(options.command).name;
        if (!options.files.empty()) refuse(parsed, "`" + name + "` takes no arguments");
        return;
    }
    if (options.files.empty() && options.command == Command::explain)
        refuse(parsed, "no code is given", "`orvex codes` lists all codes");
    if (options.files.empty()) refuse(parsed, "no file is given");
    if (std::count(options.files.begin(), options.files.end(), "-") +
            std::count(options.data.begin(), options.data.end(), "-") >
        1) {
        refuse(parsed, "`-` is given twice, but standard input can be read only once");
    }
    if (options.unsafe_fixes && !options.fix && !options.diff)
        refuse(parsed, "`--unsafe-fixes` needs `--fix` or `--diff`");
    if (!options.set_sizes.empty() && !options.summary) refuse(parsed, "`--set` needs `--summary`");
    if (options.depth >= 0 && options.focus.empty()) refuse(parsed, "`--depth` needs `--focus`");
}

bool was_given(const Words& words, std::string_view name) {
    return std::any_of(words.options.begin(), words.options.end(),
                       [&](const auto& option) { return option.first == name; });
}

// With a known command, "--help" counts anywhere, even where another option would take it as its
// value.
bool asks_for_help(const std::vector<std::string>& arguments, const Words& words) {
    const auto end = std::find(arguments.begin(), arguments.end(), "--");
    return was_given(words, "--help") || std::any_of(arguments.begin(), end, [](const auto& word) {
               return word == "-h" || word == "--help";
           });
}

// An option such as "--model=" would take the next word as its value.
std::string option_without_value(const std::vector<std::string>& arguments) {
    for (const std::string& word : arguments) {
        if (word == "--") break;
        if (word.starts_with("--") && word.find('=') == word.size() - 1) {
            return word.substr(0, word.size() - 1);
        }
    }
    return "";
}

// Takes the options and files of the command, or finds out what is wrong with them.
void read_options(const std::vector<std::string>& arguments, const Words& words,
                  ParsedCommandLine& parsed) {
    Options& options = parsed.options;
    options.format = asked_format(arguments);
    if (!words.plain.empty() && options.command == Command::none)
        refuse_command(parsed, words.plain.front());
    if (!words.unknown.empty()) refuse_option(parsed, words.unknown.front());
    if (!words.wrong.empty()) refuse(parsed, words.wrong);
    if (words.plain.empty()) refuse(parsed, "no command is given");
    if (const std::string name = option_without_value(arguments); !name.empty()) {
        refuse(parsed, "`" + name + "` needs a value");
    }
    if (parsed.done) return;

    options.files.assign(words.plain.begin() + 1, words.plain.end());
    for (const auto& [name, values] : words.options) take_option(parsed, name, values);
    if (options.command == Command::expand) move_data_files(options);
    check_command_line(parsed);
}

}  // namespace

ParsedCommandLine parse_command_line(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
    if (arguments.empty()) return print(help_of(Command::none));
    Words words = split_words(arguments);
    const bool help = !words.plain.empty() && words.plain.front() == "help";
    if (help) words.plain.erase(words.plain.begin());
    ParsedCommandLine parsed;
    Options& options = parsed.options;
    if (!words.plain.empty()) options.command = command_of(words.plain.front());
    const bool unknown = !words.plain.empty() && options.command == Command::none;
    if (!unknown && (help || asks_for_help(arguments, words)))
        return print(help_of(options.command));
    if (was_given(words, "--version")) return print("orvex " ORVEX_VERSION "\n");

    read_options(arguments, words, parsed);
    if (parsed.done) take_reports(arguments, options);
    return parsed;
}

}  // namespace orvex::frontend
