// How many edits a percentage lets through.
#pragma once

namespace comparer {

// The steps and their order are part of the answer: at 90 percent of 5 units they give
// 0.4999999999999999, where (100 - percent) * maximum / 100 would give 0.5 and round up.
class Tolerance {
public:
    // `percent` is meant from 0 to 100.
    explicit Tolerance(unsigned long percent)
        : share_(1.0 - static_cast<double>(percent) / 100.0) {}

    // The part of `maximum` (a length in units) that may differ, not rounded. Negative for
    // percentages above 100.
    double of(unsigned long maximum) const {
        // By way of a signed number, whose conversion is one instruction.
        return share_ * static_cast<double>(static_cast<long>(maximum));
    }

    // The greatest distance at which two texts still count as alike: the part that may differ,
    // rounded with halves away from zero. A percentage above 100 demands as much as 100 does.
    unsigned long limit(unsigned long maximum) const {
        double const part = of(maximum);
        // A negative double has no value as an unsigned number.
        if (part < 0) return 0;
        // As std::round, whose call costs more than the rest: the subtraction is exact.
        auto const whole = static_cast<long>(part);
        return static_cast<unsigned long>(part - static_cast<double>(whole) >= 0.5 ? whole + 1
                                                                                   : whole);
    }

private:
    double share_;
};

}  // namespace comparer
