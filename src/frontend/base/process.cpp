#include "frontend/base/process.h"

#include "frontend/base/descriptors.h"
#include "frontend/base/interrupts.h"
#include "frontend/base/streams.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#ifdef __APPLE__
extern char** environ;
#endif

namespace orvex::frontend {

namespace {

// Milliseconds after which a wait looks for a signal.
constexpr int slice = 100;

[[noreturn]] void fail(const std::string& what, int error) {
    throw StartFailure{what + ": " + system_message(error), error};
}

void fail_if_interrupted() {
    if (interrupt_signal() != 0) fail("the run was ended", EINTR);
}

void pause(int milliseconds) { ::poll(nullptr, 0, milliseconds); }

// Descriptors that another thread's program must not get.
bool make_pipe(int (&ends)[2]) {
#ifdef __linux__
    return ::pipe2(ends, O_CLOEXEC) == 0;
#else
    if (::pipe(ends) != 0) return false;
    for (const int end : ends) ::fcntl(end, F_SETFD, FD_CLOEXEC);
    return true;
#endif
}

// What a program says on one of its standard streams. A pipe, because a file would have to be made
// and removed, which takes longer than the translation of a small model.
class Pipe {
  public:
    Pipe() {
        if (!make_pipe(ends_)) fail("cannot make a pipe", errno);
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
    bool take_some(std::string& text) const {
        char bytes[4096];
        const ssize_t count = read_some(ends_[0], bytes, sizeof bytes);
        if (count < 0) fail("cannot read from a pipe", errno);
        text.append(bytes, static_cast<std::size_t>(count));
        return count > 0;
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
        const int count = ::poll(ends, 2, slice);
        fail_if_interrupted();
        if (count < 0 && errno != EINTR) fail("cannot wait for a pipe", errno);
        if (count <= 0) continue;
        if (ends[0].revents != 0 && !out.take_some(ended.out)) ends[0].fd = -1;
        if (ends[1].revents != 0 && !err.take_some(ended.err)) ends[1].fd = -1;
    }
}

// A program that was started. It ends with the object.
class Child {
  public:
    explicit Child(pid_t process) : process_(process) {}
    ~Child() {
        if (process_ != 0) end();
    }
    Child(const Child&) = delete;
    Child(Child&&) = delete;
    Child& operator=(const Child&) = delete;
    Child& operator=(Child&&) = delete;

    // Waits for its end. The status is as waitpid gives it.
    int wait() {
        // A program closes its streams a moment before it ends, so it is worth to try some more.
        constexpr int tries = 20;
        int status = 0;
        for (int round = 0; !has_ended(status); ++round) {
            fail_if_interrupted();
            if (round < tries) {
                std::this_thread::yield();
            } else {
                pause(std::min(round - tries + 1, slice));
            }
        }
        return status;
    }

  private:
    bool has_ended(int& status) {
        const pid_t ended = ::waitpid(process_, &status, WNOHANG);
        if (ended == 0 || (ended < 0 && errno == EINTR)) return false;
        process_ = 0;
        if (ended < 0) fail("cannot wait for a program", errno);
        return true;
    }

    // By the signal that ends this program, and by force where that does not end it soon.
    void end() const {
        constexpr int tries = 50;
        int status = 0;
        ::kill(process_, interrupt_signal() != 0 ? interrupt_signal() : SIGTERM);
        for (int round = 0; round < tries; ++round) {
            if (::waitpid(process_, &status, WNOHANG) != 0) return;
            pause(slice / 10);
        }
        ::kill(process_, SIGKILL);
        while (::waitpid(process_, &status, 0) < 0 && errno == EINTR) {
        }
    }

    pid_t process_;
};

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
        for (const int ignored : {SIGPIPE, SIGXFSZ}) ::sigaddset(&signals, ignored);
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
    Child child(SpawnPlan(folder, input, out, err).start(words));
    Ended ended;
    read_streams(out, err, ended);
    ended.status = child.wait();
    return ended;
}

}  // namespace orvex::frontend
