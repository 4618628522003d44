// Runs whole translations of fuzzed input in one process. Checks what must hold after each of them,
// and that two runs agree if their inputs differ only in ways that must not matter.
//
// The data: a byte that chooses the comparison, a byte that chooses a place for it, lines of the
// run control file up to the first NUL byte, and the input.
#include "driver/run.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <map>
#include <string>
#include <unistd.h>

namespace {

using std::string;

constexpr std::size_t text_start = 9;  // after the line number in braces
constexpr std::size_t widest_text = 255;
const string option_start = "PUT /,'$";
const string closing_lines = ".INTEGER1=1;\n";
const string error_end = "$OFFTEXT\n$ABORT Compilation aborted.\n";

[[noreturn]] void fail(const char* what, const string& detail) {
    std::fprintf(stderr, "broken: %s\n%s\n", what, detail.c_str());
    std::abort();
}

void require(bool holds, const char* what, const string& detail) {
    if (!holds) fail(what, detail);
}

// Plain system calls: library streams would take longer than the run itself.
void write_file(const string& path, const string& text) {
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    const ssize_t written = ::write(file, text.data(), text.size());
    require(written == static_cast<ssize_t>(text.size()) && ::close(file) == 0, "disk", path);
}

// The file's text, or nothing if there is none. Removes the file.
string take_file(const string& path) {
    const int file = ::open(path.c_str(), O_RDONLY);
    if (file < 0) return "";
    string text;
    static char piece[1 << 16];
    for (ssize_t got = 0; (got = ::read(file, piece, sizeof piece)) > 0;)
        text.append(piece, static_cast<std::size_t>(got));
    ::close(file);
    ::unlink(path.c_str());
    return text;
}

// The folder of all runs. It is so deep that no model name leads out of it.
const string& folder() {
    static string top;
    static const string made = [] {
        top = ::access("/dev/shm", W_OK) == 0 ? "/dev/shm/orvex-fuzz-XXXXXX"
                                              : "/tmp/orvex-fuzz-XXXXXX";
        require(::mkdtemp(top.data()) != nullptr, "a folder", top);
        std::atexit([] { std::filesystem::remove_all(top); });
        const std::filesystem::path deep = top + "/a/a/a/a/a/a/a/a/a/a/a/a/";
        std::filesystem::create_directories(deep / "generated");
        return deep.string();
    }();
    return made;
}

struct Outcome {
    int status = 0;
    std::map<string, string> generators;
    string header;
    string error;
    bool operator==(const Outcome&) const = default;

    bool succeeded() const { return header.ends_with(closing_lines); }
};

// The settings that name files come last, so that they win.
string control_text(const string& settings) {
    return settings + "\nINP " + folder() + "m.zlm\nHDR " + folder() + "m.hdr\nSCD " + folder() +
           "generated/\n" +
           (settings.find("ERR") == string::npos ? "" : "ERR " + folder() + "m.err\n");
}

std::map<string, string> take_generators() {
    std::map<string, string> found;
    const string place = folder() + "generated";
    DIR* const entries = ::opendir(place.c_str());
    while (const dirent* const entry = ::readdir(entries)) {
        if (entry->d_type == DT_REG) found[entry->d_name] = take_file(place + "/" + entry->d_name);
    }
    ::closedir(entries);
    return found;
}

Outcome translate(const string& settings, const string& input) {
    write_file(folder() + "run.ctl", control_text(settings));
    write_file(folder() + "m.zlm", input);
    Outcome outcome;
    outcome.status = orvex::run(folder() + "run.ctl");
    outcome.header = take_file(folder() + "m.hdr");
    outcome.error = take_file(folder() + "m.err");
    outcome.generators = take_generators();
    return outcome;
}

template <typename Change>
string changed_lines(const string& text, Change change) {
    string result;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = text.find('\n', start);
        result += change(text.substr(start, end - start));
        if (end == string::npos) break;
        result += '\n';
        start = end + 1;
    }
    return result;
}

// The levels of a generator file, judging only by its indentation: after the number, every line is
// indented by two blanks for each open level; a line ");" closes one; at an empty line all are
// closed. The condition of a report block is closed like a level, but indents nothing.
class Levels {
  public:
    void take(const string& line) {
        if (line.empty()) return require(depth_ == 0, "levels open at the end of a block", line);
        if (line.front() != '{') return;
        const std::size_t indent =
            std::min(line.find_first_not_of(' ', text_start), line.size()) - text_start;
        if (indent + 2 > widest_text) deep_ = true;
        if (deep_) return;
        const string text = line.substr(text_start + indent);
        if (text == "IF (ORVREPORT,") ++reports_;
        if (text == ");" && depth_ == 0 && indent == 0)
            return require(reports_-- > 0, "closed twice", line);
        const std::size_t expected = 2 * (text == ");" ? depth_ - 1 : depth_);
        if (indent == expected + 2 && text != ");") ++depth_;  // the previous line opened a level
        if (text == ");") depth_ = indent / 2;
        require(indent == 2 * depth_, "indentation", line);
    }
    void finish() const { require(deep_ || reports_ == 0, "report condition left open", ""); }

  private:
    std::size_t depth_ = 0;
    int reports_ = 0;
    bool deep_ = false;  // indented past the last column: the levels are no longer visible
};

void check_generator(const string& text, bool complete) {
    Levels levels;
    changed_lines(text, [&levels](const string& line) {
        if (line.starts_with('{') &&
            line.compare(text_start, option_start.size(), option_start) != 0) {
            require(line.size() <= text_start + widest_text, "a line past its columns", line);
        }
        levels.take(line);
        return string();
    });
    if (complete) {
        levels.finish();
        require(text.find("\nPUTCLOSE ") != string::npos, "no trailer", text);
    }
}

void check(const Outcome& outcome) {
    require(outcome.status == 0 || outcome.status == 2, "status", std::to_string(outcome.status));
    const bool stopped = outcome.header.ends_with(error_end);
    require(outcome.succeeded() || stopped || outcome.header.empty(), "header file's end",
            outcome.header);
    for (const auto& [name, text] : outcome.generators) check_generator(text, outcome.succeeded());
}

// The generator files without their line numbers.
std::map<string, string> statements(const Outcome& outcome) {
    std::map<string, string> result = outcome.generators;
    for (auto& [name, text] : result) {
        text = changed_lines(text, [](string line) {
            if (line.starts_with('{')) line.replace(1, 5, "     ");
            return line;
        });
    }
    return result;
}

string lower_case(const string& input) {
    return changed_lines(input, [](string line) {
        const auto end =
            line.begin() + static_cast<std::ptrdiff_t>(std::min(line.find('!'), line.size()));
        std::transform(line.begin(), end, line.begin(), [](unsigned char c) {
            return static_cast<char>(c < 128 ? std::tolower(c) : c);
        });
        return line;
    });
}

string with_carriage_returns(const string& input) {
    string result;
    for (const char c : input) result += c == '\n' ? string("\r\n") : string(1, c);
    return result;
}

string with_line_inserted(const string& input, std::size_t place) {
    static const string inserted[] = {"*o:x q:1$", "", " \t", "*"};
    std::size_t start = 0;
    for (std::size_t skipped = 0; skipped < place && start < input.size(); ++skipped) {
        const std::size_t end = input.find('\n', start);
        start = end == string::npos ? 0 : end + 1;
    }
    return input.substr(0, start) + inserted[place % 4] + "\n" + input.substr(start);
}

// A second model gives the same as alone with the first model's counters.
void compare_second_model(const string& input) {
    const string all = "ERR\n";
    if (("\n" + input).find("\n+") != string::npos) return;  // may continue the previous model
    const Outcome once = translate(all, input);
    const std::size_t models = once.header.rfind("n_models   1");
    if (!once.succeeded() || models == string::npos) return;
    const string constraints = once.header.substr(once.header.rfind("n_constr") + 8, 4);
    const Outcome alone = translate(all + "NMO 1\nNCO " + constraints, input);
    const Outcome second = translate(all, input + "\n$OFFTEXT\n" + input);
    require(statements(second) == statements(alone), "a second model", input);
}

void compare(const Outcome& outcome, const string& settings, const string& input, int choice,
             std::size_t place) {
    switch (choice) {
    case 0: return require(translate(settings, input) == outcome, "a second run", input);
    case 1:
        return require(statements(translate(settings, lower_case(input))) == statements(outcome),
                       "case", input);
    case 2:
        return require(translate(settings, with_carriage_returns(input)) == outcome,
                       "carriage returns", input);
    case 3:
        return require(statements(translate(settings, with_line_inserted(input, place))) ==
                           statements(outcome),
                       "a line inserted", with_line_inserted(input, place));
    case 4: return compare_second_model(input);
    default: return check(translate(settings, input.substr(0, place * input.size() / 256)));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr int comparisons = 6;
    if (size < 3) return 0;
    const string text(data + 2, data + size);
    const std::size_t end = std::min(text.find('\0'), text.size());
    const string settings = text.substr(0, end);
    const string input = text.substr(std::min(end + 1, text.size()));
    const Outcome outcome = translate(settings, input);
    check(outcome);
    compare(outcome, settings, input, data[0] % comparisons, data[1]);
    return 0;
}
