#include "near_text/messages/interrupt.h"

#include <signal.h>
#include <sys/eventfd.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <system_error>

namespace near_text {

namespace {

constexpr int kSignals[] = {SIGHUP, SIGINT, SIGQUIT, SIGTERM};

using Clock = std::chrono::steady_clock;

// Whoever sends one to a process and to its group, as `timeout` does, sends it twice.
constexpr std::chrono::milliseconds kOneWish(200);

// A handler reaches nothing but globals.
std::atomic<Clock::rep> firstTime = 0;
std::atomic<int> caught = 0;
int descriptor = -1;

void onSignal(int number) {
    int const savedError = errno;
    Clock::rep const now = Clock::now().time_since_epoch().count();
    Clock::rep first = 0;
    if (firstTime.compare_exchange_strong(first, now)) {
        caught = number;
        eventfd_write(descriptor, 1);
    } else if (Clock::duration(now - first) > kOneWish) {
        signal(number, SIG_DFL);
        raise(number);
    }
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

bool isFirstToTellOfSignal() {
    static std::atomic<bool> isTold = false;
    return !isTold.exchange(true);
}

int signalDescriptor() {
    return descriptor;
}

}  // namespace near_text
