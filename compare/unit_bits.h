// Which of up to 64 units pass a test, one bit a unit: text is read in blocks of 64, and what
// stands in a block is found by counting zero bits.
#pragma once

#include <algorithm>
#include <cstdint>

#include "compare/unit_lanes.h"
#include "compare/utf16_string.h"

namespace comparer {

inline constexpr unsigned long kBlockUnits = 64;

// The bits below `count`; from 64 on all of them.
constexpr std::uint64_t lowBits(unsigned long count) {
    return count >= kBlockUnits ? ~std::uint64_t{0} : (std::uint64_t{1} << count) - 1;
}

// `test` takes one unit, and says whether it passes, or UnitLanes, and gives all ones in the lanes
// that pass. One that passes no unit from kClamped on may take ByteLanes of clamped units as well,
// which is quicker. Of a longer text the first 64 units are read.
template <class Test>
std::uint64_t bitsWhere(Utf16View text, Test const& test) {
    unsigned short const* const units = text.data();
    unsigned long const count = std::min(text.size(), kBlockUnits);
    auto const bitsOfTwo = [&](unsigned long first, unsigned long second) -> std::uint64_t {
        auto const a = UnitLanes::load(units + first);
        auto const b = UnitLanes::load(units + second);
        if constexpr (requires { test(ByteLanes()); }) {
            return bitsOf(test(clamped(a, b)));
        } else {
            return bitsOf(test(a), test(b));
        }
    };
    std::uint64_t bits = 0;
    if (count == kBlockUnits) {  // most blocks of a long text, without a jump
        for (unsigned long at = 0; at < kBlockUnits; at += 2 * kUnitLanes)
            bits |= bitsOfTwo(at, at + kUnitLanes) << at;
        return bits;
    }
    if (count >= 2 * kUnitLanes) {
        unsigned long at = 0;
        for (; at + 2 * kUnitLanes <= count; at += 2 * kUnitLanes)
            bits |= bitsOfTwo(at, at + kUnitLanes) << at;
        // The rest, with some units again.
        at = count - 2 * kUnitLanes;
        return bits | bitsOfTwo(at, at + kUnitLanes) << at;
    }
    if (count >= kUnitLanes) {
        std::uint64_t const ends = bitsOfTwo(0, count - kUnitLanes);
        return (ends & lowBits(kUnitLanes)) | ends >> kUnitLanes << (count - kUnitLanes);
    }
    for (unsigned long at = 0; at < count; ++at)
        bits |= std::uint64_t{test(units[at]) ? 1U : 0U} << at;
    return bits;
}

}  // namespace comparer
