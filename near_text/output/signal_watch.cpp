// A long search looks at no flag, and a write to a terminal or to standard error may wait for ever.
// So a thread does nothing but wait for the signal.
#include "near_text/output/signal_watch.h"

#include <poll.h>
#include <unistd.h>

#include <chrono>
#include <stdexcept>
#include <system_error>
#include <thread>

#include "near_text/messages/interrupt.h"
#include "near_text/messages/messages.h"
#include "near_text/messages/status.h"
#include "near_text/output/output.h"

namespace near_text {

namespace {

constexpr std::chrono::milliseconds kGrace(300);
constexpr std::chrono::milliseconds kPatience(700);  // more than a write has by itself

void watch() {
    pollfd signal = {signalDescriptor(), POLLIN, 0};
    while (poll(&signal, 1, -1) != 1) {
    }
    std::size_t before = 0;
    do {
        before = Output::writtenBytes();
        std::this_thread::sleep_for(kGrace);
    } while (Output::writtenBytes() != before);
    Output::close(kPatience);
    if (isFirstToTellOfSignal()) complainAtOnce(interruptedText().c_str());
    _exit(static_cast<int>(endedBy(signalCaught())));
}

}  // namespace

void watchForSignals() {
    try {
        std::thread(watch).detach();
    } catch (std::system_error const& error) {
        throw std::runtime_error("cannot start the thread that waits for signals: " +
                                 error.code().message());
    }
}

}  // namespace near_text
