#include "near_text/run/match_writer.h"

#include <unistd.h>

#include <cstdio>

#include "near_text/matching/longest_text.h"
#include "near_text/matching/matches.h"
#include "near_text/messages/interrupt.h"
#include "near_text/messages/messages.h"

namespace near_text {

MatchWriter::MatchWriter(Output& target, TextFile const& textsFile, bool isStrictOne)
    : output_(target), shownFile_(shownName(textsFile.name)), isStrict_(isStrictOne) {
    tellLinesDone(0);
}

bool MatchWriter::write(LineResult const& result, bool isMoreReady) {
    if (isGivenUp_) return false;
    ++lines_;
    if (!result.failure.empty()) report(result);
    if (isGivenUp_) return false;
    if (result.isFound) ++found_;
    if (result.isCut) ++cut_;
    output_.write(result.output);
    tellLinesDone(lines_);
    if (!isMoreReady) {
        flush();
        progress_.show(lines_, result.share);
    }
    return signalCaught() == 0;
}

void MatchWriter::flush() {
    progress_.clearForOutput();
    output_.flush();
}

bool MatchWriter::isWhole() const {
    return !isGivenUp_ && signalCaught() == 0;
}

Status MatchWriter::close(std::size_t leftOut) {
    progress_.clear();
    if (failures_ > 0)
        complain(std::to_string(failures_) + " of " + shownLines(lines_) + " failed");
    if (cut_ > 0) {
        complain("note: " + std::to_string(cut_) + " of " + shownLines(lines_) + " cut to " +
                 std::to_string(kMostUnits) + " units");
    }
    noteLeftOut(leftOut);
    if (signalCaught() != 0) {
        if (isFirstToTellOfSignal()) complain(interruptedText());
        return endedBy(signalCaught());
    }
    if (isatty(STDERR_FILENO) == 1) {
        double const seconds =
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
        char summary[128];
        std::snprintf(summary, sizeof summary, "%s: %zu with a match, %zu without, in %.1f s",
                      shownLines(lines_).c_str(), found_, lines_ - found_ - failures_, seconds);
        complain(summary);
    }
    return failures_ > 0 ? Status::Error : foundIf(found_ > 0);
}

// Behind the output of the lines before.
void MatchWriter::report(LineResult const& result) {
    if (lines_ > 1) flush();
    progress_.clear();
    complain(shownFile_ + ':' + std::to_string(result.line) + ": " + result.failure);
    ++failures_;
    isGivenUp_ = isStrict_;
}

}  // namespace near_text
