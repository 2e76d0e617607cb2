// near_text: the add-in, tried on texts of one's own.
#include <csignal>
#include <exception>
#include <new>

#include "near_text/messages/interrupt.h"
#include "near_text/messages/messages.h"
#include "near_text/output/output.h"
#include "near_text/program.h"

int main(int argc, char** argv) {
    using near_text::Status;
    Status status = Status::Error;
    std::signal(SIGPIPE, SIG_IGN);  // a failed write is reported instead
    near_text::holdStandardStreams();
    try {
        near_text::catchSignals();
        status = near_text::runProgram(argc, argv);
    } catch (near_text::NobodyReads const&) {
        status = near_text::endedBy(SIGPIPE);
    } catch (std::bad_alloc const&) {
        near_text::complain("out of memory");
    } catch (std::exception const& error) {
        near_text::complain(error.what());
    }
    return static_cast<int>(status);
}
