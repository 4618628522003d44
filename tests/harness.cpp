#include "harness.h"

#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace harness {

namespace fs = std::filesystem;

namespace {

const std::string program = ORVEXPP_EXE;
#ifdef ORVEX_EXE
const std::string front_end = ORVEX_EXE;
#else
const std::string front_end;
#endif

std::vector<char*> as_argv(const std::vector<std::string>& words) {
    std::vector<char*> argv;
    for (const std::string& word : words) argv.push_back(const_cast<char*>(word.c_str()));
    argv.push_back(nullptr);
    return argv;
}

// In the child process: what it writes to the descriptor goes to `path`.
void redirect(int descriptor, const std::string& path) {
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    ::dup2(file, descriptor);
    ::close(file);
}

}  // namespace

std::string read_file(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) return "(absent)";
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

std::vector<std::string> lines_of(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

Folder::Folder() {
    std::string name = (fs::temp_directory_path() / "orvex-test-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
    path_ = name;
}

Folder::~Folder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

void Folder::write(const std::string& name, const std::string& text) const {
    std::ofstream(path_ + "/" + name, std::ios::binary) << text;
}

std::string Folder::read(const std::string& name) const { return read_file(path_ + "/" + name); }

std::map<std::string, std::string> Folder::files() const {
    std::map<std::string, std::string> found;
    for (const auto& entry : fs::recursive_directory_iterator(path_)) {
        if (!entry.is_regular_file()) continue;
        found[fs::relative(entry.path(), path_).string()] = read_file(entry.path().string());
    }
    return found;
}

Result Folder::run(const std::vector<std::string>& arguments,
                   const std::vector<std::string>& environment) const {
    std::vector<std::string> command = {"/usr/bin/env"};
    command.insert(command.end(), environment.begin(), environment.end());
    command.push_back(program);
    command.insert(command.end(), arguments.begin(), arguments.end());
    return run_command(command);
}

Result Folder::shell(const std::string& command) const {
    return run_command(
        {"/usr/bin/env", "ORVEXPP=" + program, "ORVEX=" + front_end, "/bin/sh", "-c", command});
}

Result Folder::run_command(const std::vector<std::string>& command) const {
    const Folder streams;
    const std::string out = streams.path() + "/out";
    const std::string err = streams.path() + "/err";
    const pid_t child = ::fork();
    if (child == 0) {
        redirect(STDOUT_FILENO, out);
        redirect(STDERR_FILENO, err);
        if (::chdir(path_.c_str()) == 0) ::execv(command.front().c_str(), as_argv(command).data());
        ::_exit(127);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), read_file(out),
            read_file(err)};
}

}  // namespace harness
