#include "frontend/base/process.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#ifdef __APPLE__
extern char** environ;
#endif

namespace orvex::frontend {

namespace {

[[noreturn]] void fail(const std::string& what, int error) {
    throw StartFailure{what + ": " + std::strerror(error), error};
}

// What a program says on one of its standard streams. A pipe, because a file would have to be made
// and removed, which takes longer than the translation of a small model.
class Pipe {
  public:
    Pipe() {
        if (::pipe(ends_) != 0) fail("cannot make a pipe", errno);
        for (const int end : ends_) ::fcntl(end, F_SETFD, FD_CLOEXEC);
    }
    ~Pipe() {
        ::close(ends_[0]);
        close_writer();
    }
    Pipe(const Pipe&) = delete;
    Pipe(Pipe&&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    Pipe& operator=(Pipe&&) = delete;

    int reader() const { return ends_[0]; }
    int writer() const { return ends_[1]; }
    void close_writer() {
        if (ends_[1] >= 0) ::close(ends_[1]);
        ends_[1] = -1;
    }

    // Adds what is there to the text. False at the end.
    bool read_some(std::string& text) const {
        char bytes[4096];
        const ssize_t count = ::read(ends_[0], bytes, sizeof bytes);
        if (count > 0) text.append(bytes, static_cast<std::size_t>(count));
        return count > 0 || (count < 0 && errno == EINTR);
    }

  private:
    int ends_[2] = {-1, -1};
};

// Reads both streams to their ends, in whatever order something comes.
void read_streams(Pipe& out, Pipe& err, Ended& ended) {
    out.close_writer();
    err.close_writer();
    pollfd ends[] = {{out.reader(), POLLIN, 0}, {err.reader(), POLLIN, 0}};
    while (ends[0].fd >= 0 || ends[1].fd >= 0) {
        if (::poll(ends, 2, -1) < 0 && errno != EINTR) return;
        if (ends[0].revents != 0 && !out.read_some(ended.out)) ends[0].fd = -1;
        if (ends[1].revents != 0 && !err.read_some(ended.err)) ends[1].fd = -1;
        ends[0].revents = ends[1].revents = 0;
    }
}

// What the new process does before it becomes the program.
class SpawnPlan {
  public:
    SpawnPlan(const std::string& folder, int input, const Pipe& out, const Pipe& err) {
        check(::posix_spawn_file_actions_init(&actions_));
        check(::posix_spawnattr_init(&attributes_));
        if (!folder.empty())
            check(::posix_spawn_file_actions_addchdir_np(&actions_, folder.c_str()));
        if (input >= 0) {
            check(::posix_spawn_file_actions_adddup2(&actions_, input, STDIN_FILENO));
        } else {
            check(::posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY,
                                                     0));
        }
        check(::posix_spawn_file_actions_adddup2(&actions_, out.writer(), STDOUT_FILENO));
        check(::posix_spawn_file_actions_adddup2(&actions_, err.writer(), STDERR_FILENO));
        sigset_t signals;
        ::sigemptyset(&signals);
        ::posix_spawnattr_setsigmask(&attributes_, &signals);
        ::sigaddset(&signals, SIGPIPE);
        ::posix_spawnattr_setsigdefault(&attributes_, &signals);
        ::posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
    }
    ~SpawnPlan() {
        ::posix_spawn_file_actions_destroy(&actions_);
        ::posix_spawnattr_destroy(&attributes_);
    }
    SpawnPlan(const SpawnPlan&) = delete;
    SpawnPlan(SpawnPlan&&) = delete;
    SpawnPlan& operator=(const SpawnPlan&) = delete;
    SpawnPlan& operator=(SpawnPlan&&) = delete;

    pid_t start(std::vector<std::string>& words) const {
        std::vector<char*> arguments;
        arguments.reserve(words.size() + 1);
        for (std::string& word : words) arguments.push_back(word.data());
        arguments.push_back(nullptr);
        pid_t process = 0;
        const int error = ::posix_spawnp(&process, arguments.front(), &actions_, &attributes_,
                                         arguments.data(), environ);
        if (error != 0) fail("cannot run " + words.front(), error);
        return process;
    }

  private:
    static void check(int error) {
        if (error != 0) fail("cannot start a process", error);
    }

    posix_spawn_file_actions_t actions_{};
    posix_spawnattr_t attributes_{};
};

}  // namespace

Ended run_process(std::vector<std::string> words, const std::string& folder, int input) {
    // Whoever started this program may have told it to ignore the end of its children.
    static const auto before = std::signal(SIGCHLD, SIG_DFL);
    static_cast<void>(before);
    Pipe out;
    Pipe err;
    const pid_t process = SpawnPlan(folder, input, out, err).start(words);
    Ended ended;
    read_streams(out, err, ended);
    while (::waitpid(process, &ended.status, 0) < 0) {
        if (errno != EINTR) fail("cannot wait for " + words.front(), errno);
    }
    return ended;
}

}  // namespace orvex::frontend
