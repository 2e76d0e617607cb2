#include "near_text/run/match_writer.h"

#include <unistd.h>

#include <cstdio>

#include "near_text/messages/messages.h"

namespace near_text {

MatchWriter::MatchWriter(Output& target, TextFile const& textsFile, bool isStrictOne,
                         Interrupt const& interruptor)
    : output(target),
      shownFile(shownName(textsFile.name)),
      isStrict(isStrictOne),
      interrupt(interruptor),
      progress(textsFile) {}

bool MatchWriter::write(LineResult const& result) {
    if (isGivenUp) return false;
    ++lines;
    if (!result.failure.empty()) report(result);
    if (isGivenUp) return false;
    if (result.isFound) ++found;
    progress.clearForOutput();
    output.write(result.output);
    output.flush();
    progress.step();
    return interrupt.signal() == 0;
}

Status MatchWriter::close() {
    progress.clear();
    if (failures > 0) complain(std::to_string(failures) + " of " + done() + " failed");
    if (interrupt.signal() != 0) {
        complain("interrupted after " + done());
        return endedBy(interrupt.signal());
    }
    if (isatty(STDERR_FILENO) == 1) {
        double const seconds =
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        char summary[128];
        std::snprintf(summary, sizeof summary, "%s: %zu with a match, %zu without, in %.1f s",
                      done().c_str(), found, lines - found - failures, seconds);
        complain(summary);
    }
    return failures > 0 ? Status::Error : foundIf(found > 0);
}

void MatchWriter::report(LineResult const& result) {
    progress.clear();
    complain(shownFile + ':' + std::to_string(result.line) + ": " + result.failure);
    ++failures;
    isGivenUp = isStrict;
}

std::string MatchWriter::done() const {
    return std::to_string(lines) + (lines == 1 ? " line" : " lines");
}

}  // namespace near_text
