// How the program ends, as its exit status.
#pragma once

namespace near_text {

enum class Status { Found = 0, NotFound = 1, Error = 2 };

// A run that a signal ended, as a shell reports it.
constexpr Status endedBy(int signal) {
    return Status{128 + signal};
}

constexpr Status foundIf(bool isFound) {
    return isFound ? Status::Found : Status::NotFound;
}

}  // namespace near_text
