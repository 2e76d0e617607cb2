// The wish of the user, or of the system, that a run should end early: SIGINT and SIGTERM.
#pragma once

namespace near_text {

// Catches each signal once while it lives; a second one ends the program at once, as it would have
// done anyway. A signal that was ignored before stays ignored. There is at most one such object.
class Interrupt {
public:
    Interrupt();
    ~Interrupt();
    Interrupt(Interrupt const&) = delete;
    Interrupt& operator=(Interrupt const&) = delete;

    // The signal that came, or 0.
    int signal() const;
    // Becomes readable with the signal, so that a wait for input ends too.
    int descriptor() const;
};

}  // namespace near_text
