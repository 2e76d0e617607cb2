#include "near_text/messages/memory.h"

#include <unistd.h>

#include <atomic>
#include <exception>
#include <new>

#include "near_text/messages/messages.h"
#include "near_text/messages/status.h"

namespace near_text {

namespace {

// A handler reaches nothing but globals.
std::atomic<bool> hasFailed = false;
std::terminate_handler terminateOtherwise = nullptr;

[[noreturn]] void onFailure() {
    hasFailed = true;
    throw std::bad_alloc();
}

[[noreturn]] void onTerminate() {
    if (!hasFailed) terminateOtherwise();
    complainOfMemory();
    _exit(static_cast<int>(Status::Error));
}

}  // namespace

void watchMemory() {
    std::set_new_handler(onFailure);
    terminateOtherwise = std::set_terminate(onTerminate);
}

void requireMemory() {
    if (hasFailed) throw std::bad_alloc();
}

}  // namespace near_text
