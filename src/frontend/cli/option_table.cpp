#include "frontend/cli/option_table.h"

#include "frontend/base/bytes.h"
#include "frontend/base/decimals.h"
#include "frontend/base/spelling.h"
#include "frontend/findings/messages.h"
#include "frontend/rules/rule.h"
#include "frontend/translator/translator.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string_view>
#include <system_error>
#include <vector>

namespace orvex::frontend {

namespace {

constexpr std::array commands = {
    CommandRow{Command::translate, "translate", "[OPTION...] FILE...",
               "write the generator and header files of all models",
               "Translates every model of each file and writes its generator file (MODEL.GEN) and\n"
               "header file (MODEL.HDR). A file that would not change is not touched, and nothing\n"
               "is written for a model with an error. \"-\" is standard input.\n"},
    CommandRow{
        Command::check, "check", "[OPTION...] FILE|FOLDER...", "show all errors and warnings",
        "Shows all errors and warnings of each file, not only the first error, and writes no\n"
        "output files. With --fix it corrects the files. A folder is searched for *.zlm\n"
        "files. \"-\" is standard input.\n"},
    CommandRow{Command::fmt, "fmt", "[OPTION...] FILE|FOLDER...",
               "lay out models in one standard way",
               "Lays out the models of each file in one standard way. Blanks, line breaks and\n"
               "capitals change, but not the meaning. A model with an error is not changed. A\n"
               "folder is searched for *.zlm files. \"-\" filters standard input.\n"},
    CommandRow{
        Command::info, "info", "[OPTION...] FILE...", "list the names of each model",
        "Lists the names of each model with their kind, dimension, description, declaration\n"
        "and references.\n"},
    CommandRow{
        Command::graph, "graph", "[OPTION...] FILE...", "draw each model as a picture",
        "Draws each model: its sectors, commodities, consumers and auxiliary variables, and\n"
        "what is produced, used, demanded, owned and taxed. All formats but svg are text.\n"},
    CommandRow{
        Command::expand, "expand", "[OPTION...] FILE... [--data DATA...]",
        "print each model as the solver reads it",
        "Runs the generator file of each model with the data, as the host does, and prints the\n"
        "result: each entry for each element, with its numbers. DATA is a JSON or CSV file.\n"},
    CommandRow{
        Command::balance, "balance", "[OPTION...] FILE... [--data DATA...]",
        "show the accounts of each model, and what does not balance",
        "Adds up what each sector, commodity and consumer receives and pays. An account whose two\n"
        "sides differ is an error. FILE is a model, which needs its data, or what the host has\n"
        "printed for the solver (*.scr, or \"-\" for standard input).\n"},
    CommandRow{Command::explain, "explain", "[OPTION...] CODE...", "explain a message",
               "Explains a message and what to do, with a wrong and a corrected example.\n"
               "CODE is the word in brackets in the message.\n"},
    CommandRow{Command::lsp, "lsp", "[OPTION...] [--check FILE...]", "serve an editor",
               "Serves an editor that speaks the Language Server Protocol, on standard input and\n"
               "output: findings while typing, hover, completion, renaming and more.\n"},
    CommandRow{Command::codes, "codes", "", "list the codes of all messages",
               "Lists the codes of all messages, each with its message.\n"},
};

constexpr unsigned bit(Command command) { return 1U << static_cast<unsigned>(command); }

constexpr unsigned with_output = bit(Command::translate);
constexpr unsigned with_warnings = bit(Command::translate) | bit(Command::check);
constexpr unsigned with_levels = with_warnings | bit(Command::lsp);
constexpr unsigned with_data = bit(Command::expand) | bit(Command::balance);
constexpr unsigned with_translator =
    with_warnings | bit(Command::info) | bit(Command::graph) | with_data;
constexpr unsigned with_files = with_translator | bit(Command::fmt);
constexpr unsigned with_findings = with_warnings | bit(Command::fmt);
constexpr unsigned with_colour = with_files | bit(Command::explain);

const std::vector<std::string> format_names = {"text", "short", "json", "sarif", "github", "junit"};
const std::vector<std::string> picture_names = {"dot", "svg", "mermaid", "json", "table"};
const std::vector<std::string> table_names = {"text", "json", "csv", "sam"};
const std::vector<std::string> colour_names = {"auto", "always", "never"};
const std::vector<std::string> level_names = {"off", "note", "warning", "error"};
constexpr Severity levels[] = {Severity::off, Severity::note, Severity::warning, Severity::error};

constexpr int most_jobs = 256;
constexpr int most_errors = 1'000'000;
constexpr int most_depth = 1'000'000;
constexpr int most_elements = 1'000'000;
constexpr int most_models_before = 98;        // generated names have two digits for a model
constexpr int most_constraints_before = 998;  // and three for a constraint

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
    const std::string name = nearest_word(word, names);
    return name.empty() ? "" : ": did you mean `" + name + "`?";
}

// These parse values of options for the rows of the table.
std::string take_name(const std::string& value, const std::vector<std::string>& names,
                      std::size_t& index) {
    const auto found = std::find(names.begin(), names.end(), value);
    index = static_cast<std::size_t>(found - names.begin());
    if (found != names.end()) return "";
    return "must be " + listed(names) + ", not `" + value + "`" + did_you_mean(value, names);
}

template <typename Number>
std::string take_number(const std::string& value, int least, int most, Number& number) {
    int read = 0;
    const char* const end = value.data() + value.size();
    const auto [stop, error] = std::from_chars(value.data(), end, read);
    if (error != std::errc() || stop != end || read < least || read > most) {
        return "must be a number from " + std::to_string(least) + " to " + std::to_string(most) +
               ", not `" + value + "`";
    }
    number = static_cast<Number>(read);
    return "";
}

std::string take_text(const std::string& value, std::string& text) {
    if (value.empty()) return "must not be empty";
    text = value;
    return "";
}

// A text that goes on a line of the control file.
std::string take_control_text(const std::string& value, std::string& text) {
    const auto is_control = [](char c) { return static_cast<unsigned char>(c) < ' '; };
    if (std::any_of(value.begin(), value.end(), is_control)) {
        return "must not have control characters";
    }
    if (value.size() > longest_setting) {
        return "must have at most " + std::to_string(longest_setting) + " characters";
    }
    return take_text(value, text);
}

std::string take_format(Options& options, const std::string& value) {
    std::size_t index = 0;
    if (options.command == Command::graph) {
        std::string wrong = take_name(value, picture_names, index);
        if (wrong.empty()) options.picture = value;
        options.format = value == "json" ? Format::json : Format::text;
        return wrong;
    }
    std::string wrong = take_name(value, format_names, index);
    if (wrong.empty()) options.format = format_of(value).value_or(Format::text);
    return wrong;
}

std::string take_table(Options& options, const std::string& value) {
    std::size_t index = 0;
    std::string wrong = take_name(value, table_names, index);
    if (wrong.empty()) options.table = value;
    options.format = value == "json" ? Format::json : Format::text;
    return wrong;
}

std::string take_tolerance(Options& options, const std::string& value) {
    const std::optional<double> read = decimal_in(value);
    const bool is_share = read && *read >= 0 && *read < 1;
    if (!is_share) return "must be a number from 0 to less than 1, not `" + value + "`";
    options.tolerance = *read;
    return "";
}

std::string take_report(Options& options, const std::string& value) {
    const std::size_t equals = value.find('=');
    const std::string name = value.substr(0, equals);
    if (equals == std::string::npos) return "must be FORMAT=PATH, not `" + value + "`";
    std::size_t index = 0;
    std::string wrong = take_name(name, format_names, index);
    if (!wrong.empty()) return wrong;
    const std::string path = value.substr(equals + 1);
    if (path.empty()) return "must be FORMAT=PATH, not `" + value + "`";
    if (path == "-")
        return "needs a file name; for the command's own output use `--format " + name + "`";
    for (const auto& [format, other] : options.reports) {
        if (other == path) return "is given twice for `" + path + "`";
    }
    options.reports.emplace_back(format_of(name).value_or(Format::text), path);
    return "";
}

std::vector<std::string> warning_codes() {
    std::vector<std::string> codes;
    for (const Rule& rule : rules()) {
        if (rule.level != Severity::error) codes.emplace_back(rule.code);
    }
    return codes;
}

std::string take_warn(Options& options, const std::string& value) {
    const std::size_t equals = value.find('=');
    const bool for_all = equals == std::string::npos;
    std::size_t index = 0;
    std::string wrong = take_name(for_all ? value : value.substr(equals + 1), level_names, index);
    if (!wrong.empty()) return wrong;
    const std::string code = for_all ? "all" : in_small_letters(value.substr(0, equals));
    if (!for_all) {
        const std::vector<std::string> codes = warning_codes();
        if (std::find(codes.begin(), codes.end(), code) == codes.end()) {
            const char* const known =
                find_code(code) == nullptr ? "has the unknown code `" : "is for warnings, not `";
            return known + code + "`" + did_you_mean(code, codes);
        }
    }
    options.levels[code] = levels[index];
    return "";
}

std::string take_data(Options& options, const std::string& value) {
    if (value.empty()) return "must not be empty";
    options.data.push_back(value);
    return "";
}

std::string take_set_size(Options& options, const std::string& value) {
    const std::size_t equals = value.find('=');
    if (equals == std::string::npos || equals == 0) return "must be NAME=N, not `" + value + "`";
    std::uint64_t size = 0;
    std::string wrong = take_number(value.substr(equals + 1), 0, most_elements, size);
    std::string name = value.substr(0, equals);
    make_upper(name);
    if (wrong.empty()) options.set_sizes[name] = size;
    return wrong;
}

std::string take_colour(Options& options, const std::string& value) {
    std::size_t index = 0;
    std::string wrong = take_name(value, colour_names, index);
    if (wrong.empty()) options.colour = static_cast<Colour>(index);
    return wrong;
}

const OptionRow option_rows[] = {
    {"-o,--out", "DIR", with_output, "folder for the outputs (default: the current one)",
     [](Options& o, const std::string& v) { return take_text(v, o.out); }},
    {"--header", "PATH", with_output, "path of the header file, for one model",
     [](Options& o, const std::string& v) { return take_text(v, o.header); }},
    {"--depfile", "PATH", with_output, "write what the outputs depend on, for make or ninja",
     [](Options& o, const std::string& v) { return take_text(v, o.depfile); }},
    {"--format", "PICTURE", bit(Command::graph),
     "dot (default), svg (drawn by Graphviz), mermaid, json or table", take_format},
    {"--data", "DATA", with_data, "a data file, JSON or CSV; repeatable", take_data},
    {"--summary", "", bit(Command::expand),
     "show how large each block becomes, instead of printing it",
     [](Options& o, const std::string&) {
         o.summary = true;
         return std::string();
     }},
    {"--set", "NAME=N", bit(Command::expand),
     "with --summary: an upper bound if this set has N elements; repeatable", take_set_size},
    {"--check", "", bit(Command::lsp), "test the server on files, without an editor",
     [](Options& o, const std::string&) {
         o.self_check = true;
         return std::string();
     }},
    {"--log", "FILE", bit(Command::lsp), "write the log to a file (default: standard error)",
     [](Options& o, const std::string& v) { return take_text(v, o.log); }},
    {"--focus", "NAME", bit(Command::graph), "draw only what is connected to this name",
     [](Options& o, const std::string& v) { return take_text(v, o.focus); }},
    {"--depth", "N", bit(Command::graph), "with --focus: at most N steps away",
     [](Options& o, const std::string& v) { return take_number(v, 0, most_depth, o.depth); }},
    {"--format", "TABLE", bit(Command::balance),
     "text (default), json, csv, or sam: the table of accounts as CSV", take_table},
    {"--tolerance", "SHARE", bit(Command::balance),
     "difference allowed, as a share of the larger side (default: 1e-6)", take_tolerance},
    {"--against", "FILE", bit(Command::balance), "compare with a table of accounts in a CSV file",
     [](Options& o, const std::string& v) { return take_text(v, o.against); }},
    {"--model", "NAME", with_translator, "only the model with this name",
     [](Options& o, const std::string& v) { return take_text(v, o.model); }},
    {"--format", "FORMAT", bit(Command::info),
     "names as text (default) or json; findings also as short, sarif, github or junit",
     take_format},
    {"--format", "FORMAT", bit(Command::expand),
     "findings as text (default), short, json, sarif, github or junit; a summary as text or json",
     take_format},
    {"--format", "FORMAT", with_findings,
     "findings as text (default), short, json, sarif, github or junit", take_format},
    {"--report", "FORMAT=PATH", with_files, "also write the findings to a file; repeatable",
     take_report},
    {"--warn", "[CODE=]LEVEL", with_levels | with_data,
     "off, note, warning or error, for a code or for all warnings; repeatable", take_warn},
    {"--fix", "", bit(Command::check), "make safe corrections, and check again",
     [](Options& o, const std::string&) {
         o.fix = true;
         return std::string();
     }},
    {"--unsafe-fixes", "", bit(Command::check),
     "with --fix or --diff: also make corrections that may be wrong",
     [](Options& o, const std::string&) {
         o.unsafe_fixes = true;
         return std::string();
     }},
    {"--check", "", bit(Command::fmt), "show which files would change; change none",
     [](Options& o, const std::string&) {
         o.check_only = true;
         return std::string();
     }},
    {"--diff", "", bit(Command::check) | bit(Command::fmt),
     "print what would change as a diff; change no file",
     [](Options& o, const std::string&) {
         o.diff = true;
         return std::string();
     }},
    {"--add-allow", "", bit(Command::check), "write comments that allow all warnings found",
     [](Options& o, const std::string&) {
         o.add_allow = true;
         return std::string();
     }},
    {"--error-on-warnings", "", with_warnings | with_data, "count warnings as errors",
     [](Options& o, const std::string&) {
         o.error_on_warnings = true;
         return std::string();
     }},
    {"--statistics", "", bit(Command::check), "count the findings of each code",
     [](Options& o, const std::string&) {
         o.statistics = true;
         return std::string();
     }},
    {"--exit-zero", "", bit(Command::check), "exit with status 0 despite findings",
     [](Options& o, const std::string&) {
         o.exit_zero = true;
         return std::string();
     }},
    {"--max-errors", "N", with_files, "show at most N errors per file (default: 20; 0: all)",
     [](Options& o, const std::string& v) { return take_number(v, 0, most_errors, o.max_errors); }},
    {"-j,--jobs", "N", with_findings, "work on N files at once",
     [](Options& o, const std::string& v) { return take_number(v, 1, most_jobs, o.jobs); }},
    {"--first-model", "N", with_levels, "number models from N + 1 (default: 0)",
     [](Options& o, const std::string& v) {
         return take_number(v, 0, most_models_before, o.first_model);
     }},
    {"--first-constraint", "N", with_levels, "number constraints from N + 1 (default: 0)",
     [](Options& o, const std::string& v) {
         return take_number(v, 0, most_constraints_before, o.first_constraint);
     }},
    {"--time", "STAMP", with_levels, "time stamp of the host's run",
     [](Options& o, const std::string& v) { return take_control_text(v, o.time); }},
    {"--put-file", "PATH", with_levels, "path in the host's FILE statement (default: FILE.scr)",
     [](Options& o, const std::string& v) { return take_control_text(v, o.put_file); }},
    {"--stdin-filename", "NAME", with_files, "name of standard input in messages",
     [](Options& o, const std::string& v) { return take_text(v, o.stdin_filename); }},
    {"--translator", "PATH", with_translator | with_levels,
     "the orvexpp to run (default: next to orvex, or in PATH)",
     [](Options& o, const std::string& v) { return take_text(v, o.program); }},
    {"--color", "WHEN", with_colour, "auto (default), always or never", take_colour},
    {"-q,--quiet", "", with_files, "no summary and no progress",
     [](Options& o, const std::string&) {
         o.quiet = true;
         return std::string();
     }},
};

}  // namespace

std::span<const CommandRow> command_table() { return commands; }

const CommandRow& row_of(Command command) {
    return *std::find_if(commands.begin(), commands.end(),
                         [&](const CommandRow& row) { return row.command == command; });
}

std::span<const OptionRow> option_table() { return option_rows; }

namespace {

const std::vector<std::string>& names_of_formats(Command command) {
    if (command == Command::graph) return picture_names;
    return command == Command::balance ? table_names : format_names;
}

}  // namespace

bool is_format(Command command, std::string_view value) {
    const bool has_format =
        command == Command::none ||
        std::any_of(std::begin(option_rows), std::end(option_rows), [&](const OptionRow& row) {
            return has_option(command, row) && long_name(row) == "--format";
        });
    const std::vector<std::string>& names = names_of_formats(command);
    return has_format && std::find(names.begin(), names.end(), value) != names.end();
}

bool has_option(Command command, const OptionRow& row) {
    return (row.commands & bit(command)) != 0;
}

std::string long_name(const OptionRow& row) {
    const std::string_view names = row.names;
    return std::string(names.substr(names.find("--")));
}

}  // namespace orvex::frontend
