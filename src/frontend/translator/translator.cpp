#include "frontend/translator/translator.h"

#include "frontend/base/bytes.h"
#include "frontend/base/files.h"
#include "frontend/base/streams.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <dirent.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#ifdef __APPLE__
#include <mach-o/dyld.h>
#endif

namespace orvex::frontend {

namespace {

// Files of a run in its folder, next to the outputs, which all end in .GEN or .HDR.
constexpr char control_file[] = "control";
constexpr char input_file[] = "input";
constexpr char error_file[] = "error";

constexpr char ended_early[] = "it ended before it had read the model";

constexpr std::size_t longest_number = 4;

void write_file(const TempDir& place, const std::string& name, std::string_view bytes) {
    if (!write_private_file(place.path() + "/" + name, bytes))
        throw FolderFailure{place.parent(), errno};
}

// Removes the files of a folder.
void empty_folder(const std::string& path) {
    DIR* const folder = ::opendir(path.c_str());
    if (folder == nullptr) return;
    while (const dirent* const entry = ::readdir(folder)) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..") ::unlinkat(::dirfd(folder), entry->d_name, 0);
    }
    ::closedir(folder);
}

// Removes the files of a run, however it ends.
class Cleaner {
  public:
    Cleaner(const TempDir& place, const std::vector<std::string>& names)
        : place_(place), names_(names) {}
    ~Cleaner() { remove_all(); }
    Cleaner(const Cleaner&) = delete;
    Cleaner(Cleaner&&) = delete;
    Cleaner& operator=(const Cleaner&) = delete;
    Cleaner& operator=(Cleaner&&) = delete;

    // A remaining file could be taken for one of the next run.
    void clean() {
        if (const int error = remove_all(); error != 0) throw FolderFailure{place_.parent(), error};
    }

  private:
    // Returns 0, or the errno for a file that remains.
    int remove_all() {
        int error = 0;
        const auto remove = [&](const std::string& name) {
            const std::string path = place_.path() + "/" + name;
            if (::unlink(path.c_str()) != 0 && errno != ENOENT) error = errno;
        };
        if (cleaned_) return 0;
        for (const char* const name : {control_file, input_file, error_file}) remove(name);
        for (const std::string& name : names_) {
            remove(name + ".GEN");
            remove(name + ".HDR");
        }
        cleaned_ = error == 0;
        return error;
    }

    const TempDir& place_;
    const std::vector<std::string>& names_;
    bool cleaned_ = false;
};

void add_text(std::string& control, std::string_view label, const std::string& value,
              const char* meaning) {
    if (value.empty()) return;
    if (value.size() > longest_setting)
        throw StartFailure{std::string("the ") + meaning + " is longer than " +
                           std::to_string(longest_setting) + " characters"};
    if (value.find_first_of(std::string_view("\n\r\0", 3)) != std::string::npos)
        throw StartFailure{std::string("the ") + meaning + " contains a line end or a NUL"};
    control.append(label).append(" ").append(value).append("\n");
}

void add_number(std::string& control, std::string_view label, int value, const char* meaning) {
    if (value == 0) return;
    const std::string digits = std::to_string(value);
    if (digits.size() > longest_number)
        throw StartFailure{std::string("the ") + meaning + " has more than four characters"};
    control.append(label).append(" ").append(digits).append("\n");
}

std::string control_text(const RunSettings& settings) {
    std::string control;
    control.append("INP ").append(input_file).append("\nERR ").append(error_file).append("\n");
    add_text(control, "SCR", settings.put_file, "path of the put file");
    add_text(control, "TIM", settings.time, "time stamp");
    add_number(control, "NMO", settings.first_model, "starting number of the models");
    add_number(control, "NCO", settings.first_constraint, "starting number of the constraints");
    return control;
}

// The words of a stream on one line.
std::string words_of(std::string_view text) {
    std::string words;
    while (!text.empty()) {
        const std::string_view line = trimmed(take_line(text));
        if (line.empty()) continue;
        if (!words.empty()) words += ' ';
        words += line;
    }
    return words;
}

void expect_orderly_end(const std::string& program, const Ended& ended) {
    if (WIFSIGNALED(ended.status))
        throw StartFailure{program + " was stopped by signal " +
                           std::to_string(WTERMSIG(ended.status))};
    if (WEXITSTATUS(ended.status) != 0) {
        const std::string words = words_of(ended.err);
        throw StartFailure{program + " ended with status " +
                           std::to_string(WEXITSTATUS(ended.status)) +
                           (words.empty() ? "" : ": " + words)};
    }
    if (const std::string words = words_of(ended.out); !words.empty()) throw StartFailure{words};
}

// An output as found.
struct Found {
    std::string text;
    // errno if it could not be read; ENOENT if it does not exist.
    int error = 0;
};

Found find(const std::string& path) {
    Found found;
    if (!read_file(path, found.text)) found.error = errno;
    return found;
}

std::string unread(const std::string& file, int error) {
    return "cannot read " + file + ": " + system_message(error);
}

// The report has ten lines: the second names the model, the fourth is the message, the eighth the
// last line read. A report of another form means that the translator itself has failed.
struct Report {
    bool whole = false;
    std::string model, message, last_record;
};

Report read_report(std::string_view text) {
    constexpr std::string_view before_model = " Error preprocessing: ";
    const std::vector<std::string_view> lines = lines_of(text);
    Report report;
    if (lines.size() != 10 || !text.ends_with(".HDR for details.\n") ||
        !lines[1].starts_with(before_model)) {
        return report;
    }
    report.whole = true;
    report.model = lines[1].substr(before_model.size());
    report.message = lines[3];
    report.last_record = lines[7];
    return report;
}

struct Outputs {
    const std::string& folder;
    bool are_kept;
};

// Takes the model of a run that ended well, or returns why that is unknown.
std::string take_model(const Outputs& outputs, const std::string& name, RunResult& result) {
    const std::string path = outputs.folder + "/" + name;
    Found generator = find(path + ".GEN");
    Found header = find(path + ".HDR");
    if (generator.error == ENOENT && header.error == ENOENT) return ended_early;
    if (generator.error != 0) return unread("`" + name + ".GEN`", generator.error);
    if (header.error != 0) return unread("`" + name + ".HDR`", header.error);
    // The last line of a complete header file: an error block would follow it.
    if (!header.text.ends_with("\n" + name + ".INTEGER1=1;\n"))
        return "`" + name + ".HDR` is not complete, and no report says why";
    result.models.push_back({name, {}, {}, true});
    if (!outputs.are_kept) return {};
    result.models.back().generator = std::move(generator.text);
    result.models.back().header = std::move(header.text);
    return {};
}

std::string take_models(const Outputs& outputs, const std::vector<std::string>& names,
                        RunResult& result) {
    std::string cause;
    for (std::size_t i = 0; i < names.size() && cause.empty(); ++i)
        cause = take_model(outputs, names[i], result);
    return cause;
}

// Takes the report about the model in which the run stopped.
std::string take_report(const Outputs& outputs, const std::string& text,
                        const std::vector<std::string>& names, RunResult& result) {
    Report report = read_report(text);
    if (!report.whole) {
        const std::string words = words_of(text);
        return "the translator's report is not complete" + (words.empty() ? "" : ": " + words);
    }
    const auto stopped = std::find(names.begin(), names.end(), report.model);
    if (stopped == names.end())
        return "the translator's report is about another model, `" + report.model + "`";
    if (std::string cause = take_models(outputs, {names.begin(), stopped}, result); !cause.empty())
        return cause;
    result.failed = true;
    result.message = std::move(report.message);
    result.last_record = std::move(report.last_record);
    result.models.push_back({*stopped, {}, {}, false});
    return {};
}

std::string take_outputs(const Outputs& outputs, const std::vector<std::string>& names,
                         RunResult& result) {
    const Found report = find(outputs.folder + "/" + error_file);
    if (report.error == 0) return take_report(outputs, report.text, names, result);
    if (report.error != ENOENT) return unread("the translator's report", report.error);
    return take_models(outputs, names, result);
}

std::string own_folder() {
    std::string path(4096, '\0');
#ifdef __APPLE__
    auto size = static_cast<uint32_t>(path.size());
    if (::_NSGetExecutablePath(path.data(), &size) != 0) return {};
    path.resize(path.find('\0'));
    if (char* const real = ::realpath(path.c_str(), nullptr)) {
        path = real;
        std::free(real);
    }
#else
    const ssize_t length = ::readlink("/proc/self/exe", path.data(), path.size());
    path.resize(length < 0 ? 0 : static_cast<std::size_t>(length));
#endif
    return path.substr(0, path.find_last_of('/') + 1);
}

// A path that is also valid in another working folder.
std::string absolute(const std::string& path) {
    char* const real = ::realpath(path.c_str(), nullptr);
    if (real == nullptr) throw StartFailure{path + ": " + system_message(errno)};
    std::string result = real;
    std::free(real);
    return result;
}

bool is_program(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
           ::access(path.c_str(), X_OK) == 0;
}

std::string given_program(const std::string& given) {
    std::string path = absolute(given);
    struct stat status {};
    if (::stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode))
        throw StartFailure{given + " is not a program"};
    if (::access(path.c_str(), X_OK) != 0) throw StartFailure{given + ": " + system_message(errno)};
    return path;
}

}  // namespace

TempDir::TempDir() {
    const char* const wanted = std::getenv("TMPDIR");
    path_ = wanted == nullptr || *wanted == '\0' ? "/tmp" : wanted;
    path_ += "/orvex-XXXXXX";
    if (::mkdtemp(path_.data()) == nullptr) {
        const int error = errno;
        throw FolderFailure{parent(), error};
    }
    if (path_.front() != '/') path_ = absolute(path_);
}

TempDir::~TempDir() {
    if (::rmdir(path_.c_str()) == 0) return;
    empty_folder(path_);
    ::rmdir(path_.c_str());
}

std::string text_of(const FolderFailure& failure) {
    return "cannot use the temporary folder " + failure.folder + ": " +
           system_message(failure.error);
}

std::string find_translator(const std::string& given) {
    if (!given.empty()) return given_program(given);
    const std::string name = "orvexpp";
    if (std::string path = own_folder() + name; path != name && is_program(path)) return path;
    const char* const folders = std::getenv("PATH");
    std::string_view rest = folders == nullptr ? "" : folders;
    while (!rest.empty()) {
        const auto end = rest.find(':');
        std::string path(rest.substr(0, end));
        rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
        path += path.empty() ? "./" + name : "/" + name;
        if (is_program(path)) return absolute(path);
    }
    throw StartFailure{"orvexpp is neither next to orvex nor in PATH"};
}

RunResult read_outputs(const std::string& folder, const std::vector<std::string>& names,
                       bool keeps_outputs) {
    RunResult result;
    std::string cause = take_outputs({folder, keeps_outputs}, names, result);
    if (cause.empty()) return result;
    result = RunResult();
    result.cause = std::move(cause);
    return result;
}

RunResult run_translator(const std::string& program, const TempDir& place, std::string_view input,
                         const std::vector<std::string>& names, const RunSettings& settings) {
    const std::string& folder = place.path();
    Cleaner cleaner(place, names);
    write_file(place, control_file, control_text(settings));
    write_file(place, input_file, input);
    Program run{{program, control_file}, folder};
    run.stop = settings.stop;
    Ended ended = run_process(std::move(run));
    if (ended.is_too_slow) throw StartFailure{"the run was stopped"};
    expect_orderly_end(program, ended);
    RunResult result = read_outputs(folder, names, settings.keeps_outputs);
    cleaner.clean();
    if (result.cause == ended_early) result.cause.replace(0, 2, program);
    const std::string words = words_of(ended.err);
    if (!result.cause.empty() && !words.empty()) result.cause += ": " + words;
    result.err = std::move(ended.err);
    return result;
}

}  // namespace orvex::frontend
