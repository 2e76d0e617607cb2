// The results of a match on their way out: written in order as they come, and counted.
#pragma once

#include <string>

#include "near_text/interrupt.h"
#include "near_text/ordered_work.h"
#include "near_text/output.h"
#include "near_text/progress.h"

namespace near_text {

class MatchDelivery {
public:
    // A strict delivery gives up at the first line that failed.
    MatchDelivery(Output& target, std::string const& textsFile, bool isStrictOne,
                  Interrupt const& interruptor);

    // False when the run is to stop: the delivery has given up or the run is interrupted. Throws
    // std::runtime_error when the result cannot be written.
    bool deliver(LineResult const& result);

    // Tells how many lines failed, and whether the run was interrupted. The result is the program's
    // exit status.
    int close();

private:
    void report(std::string const& failure);
    std::string done() const;

    Output& output;
    std::string const shownFile;
    bool const isStrict;
    Interrupt const& interrupt;
    Progress progress;
    std::size_t lines = 0;
    std::size_t failures = 0;
    bool isFound = false;
    bool isGivenUp = false;
};

}  // namespace near_text
