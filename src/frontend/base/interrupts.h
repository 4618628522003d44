// The signals INT, TERM and HUP. They are noted, so that the program can clean up before they end
// it.
#pragma once

#include <csignal>

namespace orvex::frontend {

// Notes these signals from now on, except those that the program was started to ignore. They
// interrupt blocking system calls of the main thread.
void catch_interrupts();

// The first of these signals received, or 0.
int interrupt_signal();

// Was the system call that just failed interrupted, but by none of these signals?
bool is_passing_interruption();

// While an object of this class exists, the thread blocks the signals, and so do threads that it
// starts: they are left to the main thread.
class InterruptsHeld {
  public:
    InterruptsHeld();
    ~InterruptsHeld();
    InterruptsHeld(const InterruptsHeld&) = delete;
    InterruptsHeld(InterruptsHeld&&) = delete;
    InterruptsHeld& operator=(const InterruptsHeld&) = delete;
    InterruptsHeld& operator=(InterruptsHeld&&) = delete;

  private:
    sigset_t before_{};
};

// Ends the program by the signal that was noted. Precondition: there is one.
void end_by_interrupt();

}  // namespace orvex::frontend
