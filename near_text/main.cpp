// near_text: the add-in, tried on texts of one's own.
#include <csignal>
#include <exception>
#include <new>

#include "near_text/messages/interrupt.h"
#include "near_text/messages/memory.h"
#include "near_text/messages/messages.h"
#include "near_text/output/output.h"
#include "near_text/output/signal_watch.h"
#include "near_text/program.h"

namespace near_text {

namespace {

struct MemoryWatch {
    MemoryWatch() { watchMemory(); }
};

// Made before the parser's own objects, for which memory may already be missing.
[[gnu::init_priority(101)]] MemoryWatch const memoryWatch;

// Throws std::bad_alloc alone.
Status runAndComplain(int argc, char** argv) {
    try {
        catchSignals();
        watchForSignals();
        Status const status = runProgram(argc, argv);
        requireMemory();
        return signalCaught() == 0 ? status : endedBy(signalCaught());
    } catch (BrokenPipe const&) {
        return endedBy(SIGPIPE);
    } catch (Interrupted const&) {
        if (isFirstToTellOfSignal()) complain(interruptedText());
        return endedBy(signalCaught());
    } catch (std::bad_alloc const&) {
        throw;
    } catch (std::exception const& error) {
        requireMemory();  // since the want of it is what caused this
        complain(error.what());
        return Status::Error;
    }
}

}  // namespace

}  // namespace near_text

int main(int argc, char** argv) {
    // A write that fails is reported instead.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    near_text::holdStandardStreams();
    auto status = near_text::Status::Error;
    try {
        status = near_text::runAndComplain(argc, argv);
    } catch (std::bad_alloc const&) {
        near_text::complainOfMemory();
    }
    return static_cast<int>(status);
}
