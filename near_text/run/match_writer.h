// The results of a run on their way out: written in order as they come, and counted.
#pragma once

#include <chrono>
#include <string>

#include "near_text/input/line_reader.h"
#include "near_text/messages/status.h"
#include "near_text/output/output.h"
#include "near_text/output/progress.h"
#include "near_text/run/interrupt.h"
#include "near_text/run/ordered_work.h"

namespace near_text {

class MatchWriter {
public:
    // `textsFile` is what is run through. A strict writer gives up at the first line that failed.
    MatchWriter(Output& target, TextFile const& textsFile, bool isStrictOne,
                Interrupt const& interruptor);

    // False when the run is to stop: the writer has given up or the run is interrupted. Throws
    // std::runtime_error when the result cannot be written.
    bool write(LineResult const& result);

    // Throws NotText where `text` could not be written.
    void requireEncodable(std::string_view text) const { output.requireEncodable(text); }

    // Tells how many lines failed, and whether the run was interrupted; on a terminal, what was
    // done.
    Status close();

private:
    void report(LineResult const& result);
    std::string done() const;

    Output& output;
    std::string const shownFile;
    bool const isStrict;
    Interrupt const& interrupt;
    Progress progress;
    std::chrono::steady_clock::time_point const start = std::chrono::steady_clock::now();
    std::size_t lines = 0;
    std::size_t failures = 0;
    std::size_t found = 0;  // lines that have a match
    bool isGivenUp = false;
};

}  // namespace near_text
