#include "frontend/translator/translator.h"

#include "frontend/base/bytes.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#ifdef __APPLE__
#include <mach-o/dyld.h>
#endif

namespace orvex::frontend {

namespace {

// The files of a run in its folder, beside the outputs, which all end in .GEN and .HDR.
constexpr char control_file[] = "control";
constexpr char input_file[] = "input";
constexpr char error_file[] = "error";

constexpr std::size_t longest_value = 255;  // of an entry of the control file
constexpr std::size_t longest_number = 4;

std::string reason_of(int error) { return std::strerror(error); }

void write_file(const std::string& path, std::string_view bytes) {
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (file < 0) throw StartFailure{"cannot write " + path + ": " + reason_of(errno)};
    while (!bytes.empty()) {
        const ssize_t count = ::write(file, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) {
            const int error = count < 0 ? errno : ENOSPC;
            ::close(file);
            throw StartFailure{"cannot write " + path + ": " + reason_of(error)};
        }
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    if (::close(file) != 0 && errno != EINTR)
        throw StartFailure{"cannot write " + path + ": " + reason_of(errno)};
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

// Leaves a folder empty on every way out of a run.
class Cleaner {
  public:
    explicit Cleaner(const std::string& path) : path_(path) {}
    ~Cleaner() { empty_folder(path_); }
    Cleaner(const Cleaner&) = delete;
    Cleaner(Cleaner&&) = delete;
    Cleaner& operator=(const Cleaner&) = delete;
    Cleaner& operator=(Cleaner&&) = delete;

  private:
    const std::string& path_;
};

void add_text(std::string& control, std::string_view label, const std::string& value,
              const char* meaning) {
    if (value.empty()) return;
    if (value.size() > longest_value)
        throw StartFailure{std::string("the ") + meaning + " is longer than 255 characters"};
    if (value.find_first_of(std::string_view("\n\r\0", 3)) != std::string::npos)
        throw StartFailure{std::string("the ") + meaning + " holds a line end or a NUL"};
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

// The words of a stream as one line.
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
        throw StartFailure{program + " was ended by signal " +
                           std::to_string(WTERMSIG(ended.status))};
    if (WEXITSTATUS(ended.status) != 0) {
        const std::string words = words_of(ended.err);
        throw StartFailure{program + " ended with status " +
                           std::to_string(WEXITSTATUS(ended.status)) +
                           (words.empty() ? "" : ": " + words)};
    }
    if (const std::string words = words_of(ended.out); !words.empty()) throw StartFailure{words};
}

// The report has ten lines, of which the fourth is the message and the eighth the last line read.
void read_report(std::string_view report, RunResult& result) {
    result.failed = true;
    for (int number = 1; !report.empty(); ++number) {
        const std::string_view line = take_line(report);
        if (number == 4) result.message = line;
        if (number == 8) result.last_record = line;
    }
}

// Reads the outputs of one model. False where the run did not come to its end.
bool read_model(const std::string& stem, ModelOutput& model) {
    const bool generated = read_file(stem + ".GEN", model.generator);
    const bool headed = read_file(stem + ".HDR", model.header);
    // The last line of a header file: the error block would stand behind it.
    model.complete = generated && headed && model.header.ends_with(".INTEGER1=1;\n");
    return model.complete;
}

void read_models(const std::string& folder, const std::vector<std::string>& names,
                 RunResult& result) {
    for (const std::string& name : names) {
        ModelOutput model;
        model.name = name;
        const bool complete = read_model(std::string(folder).append("/").append(name), model);
        if (!complete && model.generator.empty() && model.header.empty()) return;
        result.models.push_back(std::move(model));
        if (!complete) return;
    }
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

// A path that also holds in another working folder.
std::string absolute(const std::string& path) {
    char* const real = ::realpath(path.c_str(), nullptr);
    if (real == nullptr) throw StartFailure{path + ": " + reason_of(errno)};
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
    if (::access(path.c_str(), X_OK) != 0) throw StartFailure{given + ": " + reason_of(errno)};
    return path;
}

}  // namespace

Workplace::Workplace() {
    const char* const parent = std::getenv("TMPDIR");
    path_ = parent == nullptr || *parent == '\0' ? "/tmp" : parent;
    path_ += "/orvex-XXXXXX";
    if (::mkdtemp(path_.data()) == nullptr) {
        path_.resize(path_.find_last_of('/'));
        throw StartFailure{"cannot make a temporary folder in " + path_ + ": " + reason_of(errno)};
    }
    if (path_.front() != '/') path_ = absolute(path_);
}

Workplace::~Workplace() {
    empty_folder(path_);
    ::rmdir(path_.c_str());
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
    throw StartFailure{"the translator orvexpp is neither beside this program nor along PATH"};
}

RunResult run_translator(const std::string& program, const Workplace& place, std::string_view input,
                         const std::vector<std::string>& names, const RunSettings& settings) {
    const std::string& folder = place.path();
    const Cleaner cleaner(folder);
    write_file(folder + "/" + control_file, control_text(settings));
    write_file(folder + "/" + input_file, input);
    RunResult result;
    Ended ended = run_process({program, control_file}, folder);
    expect_orderly_end(program, ended);
    result.err = std::move(ended.err);
    std::string report;
    if (read_file(folder + "/" + error_file, report)) read_report(report, result);
    read_models(folder, names, result);
    return result;
}

}  // namespace orvex::frontend
