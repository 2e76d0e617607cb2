#include "near_text/match_delivery.h"

#include "near_text/commands.h"
#include "near_text/input.h"

namespace near_text {

MatchDelivery::MatchDelivery(Output& target, std::string const& textsFile, bool isStrictOne,
                             Interrupt const& interruptor)
    : output(target),
      shownFile(shownName(textsFile)),
      isStrict(isStrictOne),
      interrupt(interruptor),
      progress(textsFile) {}

bool MatchDelivery::deliver(LineResult const& result) {
    if (isGivenUp) return false;
    ++lines;
    if (!result.failure.empty()) report(result.failure);
    if (isGivenUp) return false;
    isFound |= result.isFound;
    progress.clearForOutput();
    output.write(result.output);
    output.flush();
    progress.step();
    return interrupt.signal() == 0;
}

int MatchDelivery::close() {
    progress.clear();
    if (failures > 0) complain(std::to_string(failures) + " of " + done() + " failed");
    if (interrupt.signal() != 0) {
        complain("interrupted after " + done());
        return 128 + interrupt.signal();
    }
    if (failures > 0) return kError;
    return isFound ? kFound : kNotFound;
}

void MatchDelivery::report(std::string const& failure) {
    progress.clear();
    complain(shownFile + ':' + std::to_string(lines) + ": " + failure);
    ++failures;
    isGivenUp = isStrict;
}

std::string MatchDelivery::done() const {
    return std::to_string(lines) + (lines == 1 ? " line" : " lines");
}

}  // namespace near_text
