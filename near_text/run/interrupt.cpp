#include "near_text/run/interrupt.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <stdexcept>

namespace near_text {

namespace {

// A handler reaches nothing but globals.
std::atomic<int> caught;
int wakePipe[2];

void onSignal(int number) {
    int const savedError = errno;
    caught = number;
    [[maybe_unused]] ssize_t const count = write(wakePipe[1], "", 1);
    errno = savedError;
}

}  // namespace

Interrupt::Interrupt() {
    caught = 0;
    if (pipe2(wakePipe, O_CLOEXEC | O_NONBLOCK) != 0) throw std::runtime_error("no pipe");
    for (int const number : {SIGINT, SIGTERM}) {
        struct sigaction before = {};
        sigaction(number, nullptr, &before);
        if (before.sa_handler == SIG_IGN) continue;
        struct sigaction action = {};
        action.sa_handler = onSignal;
        action.sa_flags = static_cast<int>(SA_RESETHAND) | SA_RESTART;
        sigaction(number, &action, nullptr);
    }
}

Interrupt::~Interrupt() {
    for (int const number : {SIGINT, SIGTERM}) {
        struct sigaction now = {};
        sigaction(number, nullptr, &now);
        if (now.sa_handler == onSignal) ::signal(number, SIG_DFL);
    }
    close(wakePipe[0]);
    close(wakePipe[1]);
}

int Interrupt::signal() const {
    return caught;
}

int Interrupt::descriptor() const {
    return wakePipe[0];
}

}  // namespace near_text
