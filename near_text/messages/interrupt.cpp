#include "near_text/messages/interrupt.h"

#include <signal.h>
#include <sys/eventfd.h>

#include <atomic>
#include <cerrno>
#include <system_error>

namespace near_text {

namespace {

constexpr int kSignals[] = {SIGHUP, SIGINT, SIGQUIT, SIGTERM};

// A handler reaches nothing but globals.
std::atomic<int> caught = 0;
int descriptor = -1;

void onSignal(int number) {
    int const savedError = errno;
    for (int const other : kSignals)
        signal(other, SIG_DFL);
    caught = number;
    eventfd_write(descriptor, 1);
    errno = savedError;
}

}  // namespace

void catchSignals() {
    descriptor = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (descriptor < 0)
        throw std::system_error(errno, std::generic_category(), "cannot wait for signals");
    for (int const number : kSignals) {
        struct sigaction before = {};
        sigaction(number, nullptr, &before);
        if (before.sa_handler == SIG_IGN) continue;
        struct sigaction action = {};
        action.sa_handler = onSignal;
        action.sa_flags = SA_RESTART;
        sigaction(number, &action, nullptr);
    }
}

int signalCaught() {
    return caught;
}

int signalDescriptor() {
    return descriptor;
}

}  // namespace near_text
