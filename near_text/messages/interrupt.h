// The wish of the user, or of the system, that the program should end early: SIGHUP, SIGINT,
// SIGQUIT and SIGTERM. What is finished by then is still written, and no line is cut.
#pragma once

#include <exception>

namespace near_text {

// A wait that a signal ended.
class Interrupted : public std::exception {
public:
    char const* what() const noexcept override { return "interrupted"; }
};

// To be called once, at the start. From then on the first of these signals is told below, and
// another, unless it comes with the first, ends the program at once. One that was ignored before
// stays ignored. Throws std::system_error.
void catchSignals();

// The signal that came, or 0.
int signalCaught();

// True once: threads that end the program by the signal ask before they tell of it.
bool isFirstToTellOfSignal();

// Becomes readable with the signal, so that waits end too; -1 where none is caught.
int signalDescriptor();

}  // namespace near_text
