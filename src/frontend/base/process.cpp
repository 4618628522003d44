#include "frontend/base/process.h"

#include "frontend/base/descriptors.h"
#include "frontend/base/interrupts.h"
#include "frontend/base/streams.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#ifdef __linux__
#include <sys/prctl.h>
#endif

#ifdef __APPLE__
extern char** environ;
#endif

namespace orvex::frontend {

namespace {

// Milliseconds after which a wait checks for a signal.
constexpr int slice = 100;

[[noreturn]] void fail(const std::string& what, int error) {
    throw StartFailure{what + ": " + system_message(error), error};
}

[[noreturn]] void fail_to_run(const char* program, int error) {
    fail(std::string("cannot run ") + program, error);
}

void fail_if_interrupted() {
    if (interrupt_signal() != 0) fail("the run was stopped", EINTR);
}

// When a program must have finished.
class Deadline {
  public:
    Deadline(std::chrono::milliseconds limit, const std::atomic<bool>* stop)
        : is_set_(limit.count() != 0), end_(Clock::now() + limit), stop_(stop) {}
    bool has_passed() const {
        return (is_set_ && Clock::now() >= end_) || (stop_ != nullptr && *stop_);
    }

  private:
    using Clock = std::chrono::steady_clock;
    bool is_set_;
    Clock::time_point end_;
    const std::atomic<bool>* stop_;
};

void pause(int milliseconds) { ::poll(nullptr, 0, milliseconds); }

// The descriptors must not be inherited by another thread's program.
bool make_pipe(int (&ends)[2]) {
#ifdef __linux__
    return ::pipe2(ends, O_CLOEXEC) == 0;
#else
    if (::pipe(ends) != 0) return false;
    for (const int end : ends) ::fcntl(end, F_SETFD, FD_CLOEXEC);
    return true;
#endif
}

// The output of a program on one of its standard streams. A pipe, because making and removing a
// file takes longer than the translation of a small model.
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

    // Appends what is available to the text. False at the end.
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

// Reads both streams to their ends, as output arrives. False at the deadline.
bool read_streams(Pipe& out, Pipe& err, const Deadline& deadline, Ended& ended) {
    out.close_writer();
    err.close_writer();
    pollfd ends[] = {{out.reader(), POLLIN, 0}, {err.reader(), POLLIN, 0}};
    while (ends[0].fd >= 0 || ends[1].fd >= 0) {
        const int count = ::poll(ends, 2, slice);
        fail_if_interrupted();
        if (deadline.has_passed()) return false;
        if (count < 0 && errno != EINTR) fail("cannot wait for a pipe", errno);
        if (count <= 0) continue;
        if (ends[0].revents != 0 && !out.take_some(ended.out)) ends[0].fd = -1;
        if (ends[1].revents != 0 && !err.take_some(ended.err)) ends[1].fd = -1;
    }
    return true;
}

// A running program. The destructor ends it.
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

    // Waits for its end. False at the deadline.
    bool wait(const Deadline& deadline, int& status) {
        // A program closes its streams a moment before it ends, so a few more tries are worth it.
        constexpr int tries = 20;
        for (int round = 0; !has_ended(status); ++round) {
            fail_if_interrupted();
            if (deadline.has_passed()) return false;
            if (round < tries) {
                std::this_thread::yield();
            } else {
                pause(std::min(round - tries + 1, slice));
            }
        }
        return true;
    }

  private:
    bool has_ended(int& status) {
        const pid_t ended = ::waitpid(process_, &status, WNOHANG);
        if (ended == 0 || (ended < 0 && errno == EINTR)) return false;
        process_ = 0;
        if (ended < 0) fail("cannot wait for a program", errno);
        return true;
    }

    // Sends the signal that ends this program, and kills the program if it does not end soon.
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

// What the new process does before it executes the program.
class SpawnPlan {
  public:
    SpawnPlan(const Program& program, const Pipe& out, const Pipe& err) {
        check(::posix_spawn_file_actions_init(&actions_));
        check(::posix_spawnattr_init(&attributes_));
        if (!program.folder.empty())
            check(::posix_spawn_file_actions_addchdir_np(&actions_, program.folder.c_str()));
        if (program.input >= 0) {
            check(::posix_spawn_file_actions_adddup2(&actions_, program.input, STDIN_FILENO));
        } else {
            check(::posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY,
                                                     0));
        }
        check(::posix_spawn_file_actions_adddup2(&actions_, out.writer(), STDOUT_FILENO));
        check(::posix_spawn_file_actions_adddup2(&actions_, err.writer(), STDERR_FILENO));
        sigset_t signals;
        sigemptyset(&signals);  // a macro on some systems, hence no ::
        ::posix_spawnattr_setsigmask(&attributes_, &signals);
        for (const int ignored : {SIGPIPE, SIGXFSZ}) sigaddset(&signals, ignored);
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

    pid_t start(char* const* arguments) const {
        pid_t process = 0;
        const int error =
            ::posix_spawnp(&process, arguments[0], &actions_, &attributes_, arguments, environ);
        if (error != 0) fail_to_run(arguments[0], error);
        return process;
    }

  private:
    static void check(int error) {
        if (error != 0) fail("cannot start a process", error);
    }

    posix_spawn_file_actions_t actions_{};
    posix_spawnattr_t attributes_{};
};

std::vector<char*> arguments_of(std::vector<std::string>& words) {
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    return arguments;
}

pid_t start(Program& program, const Pipe& out, const Pipe& err) {
    return SpawnPlan(program, out, err).start(arguments_of(program.words).data());
}

#ifdef __linux__

// Turns the new process into the program. Until then it may only do what is allowed after a fork in
// a process with threads. Returns only on failure, with errno set.
void become(char* const* arguments, const Program& program, const Pipe& out, const Pipe& err,
            pid_t parent) {
    sigset_t none;
    sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    for (const int ignored : {SIGPIPE, SIGXFSZ}) ::signal(ignored, SIG_DFL);
    const bool is_tied = ::prctl(PR_SET_PDEATHSIG, SIGKILL) == 0 && ::getppid() == parent;
    if (!is_tied || (!program.folder.empty() && ::chdir(program.folder.c_str()) != 0)) return;
    const int input = program.input >= 0 ? program.input : ::open("/dev/null", O_RDONLY);
    const bool is_joined = input >= 0 && ::dup2(input, STDIN_FILENO) >= 0 &&
                           ::dup2(out.writer(), STDOUT_FILENO) >= 0 &&
                           ::dup2(err.writer(), STDERR_FILENO) >= 0;
    if (is_joined) ::execvp(arguments[0], arguments);
}

// posix_spawn cannot request a signal on the death of the parent.
pid_t start_tied(Program& program, const Pipe& out, const Pipe& err) {
    const std::vector<char*> arguments = arguments_of(program.words);
    Pipe report;  // the errno of a failure; closed without one once the program runs
    const pid_t parent = ::getpid();
    const pid_t process = ::fork();
    if (process < 0) fail("cannot start a process", errno);
    int error = 0;
    if (process == 0) {
        become(arguments.data(), program, out, err, parent);
        error = errno;
        static_cast<void>(::write(report.writer(), &error, sizeof error) < 0);
        ::_exit(1);
    }
    report.close_writer();
    ssize_t count = 0;
    do {
        count = ::read(report.reader(), &error, sizeof error);
    } while (count < 0 && errno == EINTR);
    if (count == 0) return process;
    while (::waitpid(process, nullptr, 0) < 0 && errno == EINTR) {
    }
    fail_to_run(arguments.front(), error);
}

#else

pid_t start_tied(Program& program, const Pipe& out, const Pipe& err) {
    return start(program, out, err);
}

#endif

}  // namespace

Ended run_process(Program program) {
    // This program's parent may have made it ignore SIGCHLD.
    static const auto before = std::signal(SIGCHLD, SIG_DFL);
    static_cast<void>(before);
    const Deadline deadline(program.limit, program.stop);
    Pipe out;
    Pipe err;
    Child child(program.is_tied ? start_tied(program, out, err) : start(program, out, err));
    Ended ended;
    ended.is_too_slow =
        !read_streams(out, err, deadline, ended) || !child.wait(deadline, ended.status);
    return ended;
}

}  // namespace orvex::frontend
