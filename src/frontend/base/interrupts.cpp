#include "frontend/base/interrupts.h"

#include <cerrno>
#include <unistd.h>

namespace orvex::frontend {

namespace {

constexpr int interrupts[] = {SIGINT, SIGTERM, SIGHUP};

// The only way in which a signal handler can tell the program about a signal.
volatile std::sig_atomic_t noted = 0;

// A signal between a check of `noted` and a blocking system call would be missed. So the alarm
// interrupts the call a second later, and again until the program has ended.
extern "C" void note_interrupt(int signal);
extern "C" void note_interrupt(int signal) {
    const int error = errno;
    if (signal != SIGALRM && noted == 0) noted = signal;
    ::alarm(1);
    errno = error;
}

void handle(int signal) {
    struct sigaction action {};
    action.sa_handler = note_interrupt;
    ::sigaction(signal, &action, nullptr);
}

bool is_ignored(int signal) {
    struct sigaction action {};
    return ::sigaction(signal, nullptr, &action) != 0 || action.sa_handler == SIG_IGN;
}

}  // namespace

void catch_interrupts() {
    handle(SIGALRM);
    for (const int signal : interrupts) {
        if (!is_ignored(signal)) handle(signal);
    }
}

int interrupt_signal() { return noted; }

bool is_passing_interruption() { return errno == EINTR && noted == 0; }

InterruptsHeld::InterruptsHeld() {
    sigset_t held;
    sigemptyset(&held);  // a macro on some systems, hence no ::
    for (const int signal : interrupts) sigaddset(&held, signal);
    sigaddset(&held, SIGALRM);
    ::pthread_sigmask(SIG_BLOCK, &held, &before_);
}

InterruptsHeld::~InterruptsHeld() { ::pthread_sigmask(SIG_SETMASK, &before_, nullptr); }

void end_by_interrupt() {
    ::alarm(0);
    std::signal(noted, SIG_DFL);
    std::raise(noted);
}

}  // namespace orvex::frontend
