// The list of indices that a search answers with.
#pragma once

#include <limits>

namespace comparer {

// The units of `count` numbers in decimal, the comma or the terminator behind each included.
// `countFrom(number)` gives how many of them are not below the number.
template <class CountFrom>
unsigned long unitsOfList(unsigned long count, CountFrom const& countFrom) {
    unsigned long units = 2 * count;
    // Each number from a power of ten on has one digit more.
    constexpr unsigned long kLastPower = std::numeric_limits<unsigned long>::max() / 10;
    for (unsigned long power = 10;; power *= 10) {
        unsigned long const longer = countFrom(power);
        units += longer;
        if (longer == 0 || power > kLastPower) return units;
    }
}

}  // namespace comparer
