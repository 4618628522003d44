// The signals INT, TERM and HUP. They are noted, so that the program can clean up before it ends by
// them.
#pragma once

#include <csignal>

namespace orvex::frontend {

// Notes these signals from now on, but those that the program was started to ignore. A system call
// of the main thread that waits is interrupted by them.
void catch_interrupts();

// The first of them that has come, or 0.
int interrupt_signal();

// Of a system call that has just failed: was it interrupted, but by none of these signals?
bool is_passing_interruption();

// While one of these is there, the thread does not take the signals, nor do threads that it starts:
// they are left to the main thread.
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
