// The results of a run on their way out: written in order as they come, and counted.
#pragma once

#include <chrono>
#include <string>

#include "near_text/input/line_reader.h"
#include "near_text/messages/status.h"
#include "near_text/output/columns.h"
#include "near_text/output/output.h"
#include "near_text/output/progress.h"
#include "near_text/run/ordered_work.h"

namespace near_text {

class MatchWriter {
public:
    // `textsFile` is what is run through. A strict writer gives up at the first line that failed.
    MatchWriter(Output& target, TextFile const& textsFile, bool isStrictOne);

    // Flushes unless more is ready. False when the run is to stop: the writer has given up or the
    // run is interrupted. Throws as Output.
    bool write(LineResult const& result, bool isMoreReady);

    // Throws NotText where `text` could not be written.
    void requireEncodable(std::string_view text) const { output_.requireEncodable(text); }
    // As Output.
    std::string dropUnencodable(Cells& cells) const { return output_.dropUnencodable(cells); }

    // Whether each line got its answer, be it an error: neither a signal nor a failed line ended
    // the run.
    bool isWhole() const;

    // Tells how many lines failed or were cut, how many matches the terms left out, and whether the
    // run was interrupted; on a terminal, what was done.
    Status close(std::size_t leftOut = 0);

private:
    void report(LineResult const& result);
    void flush();

    Output& output_;
    std::string const shownFile_;
    bool const isStrict_;
    Progress progress_;
    std::chrono::steady_clock::time_point const start_ = std::chrono::steady_clock::now();
    std::size_t lines_ = 0;
    std::size_t failures_ = 0;
    std::size_t found_ = 0;  // lines that have a match
    std::size_t cut_ = 0;
    bool isGivenUp_ = false;
};

}  // namespace near_text
