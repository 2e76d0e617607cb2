// The one answer to which units separate words, for one unit and for many at once.
#pragma once

#include <algorithm>
#include <concepts>
#include <iterator>

#include "compare/unit_lanes.h"

namespace comparer {

// Tab, line feed, carriage return and space, and no other: a no-break space or a form feed belongs
// to a word.
inline constexpr unsigned short kWhiteSpaceUnits[] = {9, 10, 13, 32};

constexpr bool isWhiteSpaceUnit(unsigned short unit) {
    constexpr unsigned kBits = 64;
    constexpr std::uint64_t kMask = [] {
        std::uint64_t mask = 0;
        for (unsigned const white : kWhiteSpaceUnits)
            mask |= white < kBits ? std::uint64_t{1} << white : 0;
        return mask;
    }();
    if (unit < kBits) return (kMask >> unit & 1U) != 0;
    return std::ranges::any_of(
        kWhiteSpaceUnits, [unit](unsigned short white) { return white >= kBits && white == unit; });
}

// While no whitespace is among the units that are clamped to one.
inline constexpr bool kBytesWillDo = std::ranges::max(kWhiteSpaceUnits) < kClamped;

template <class Lanes>
concept WhiteSpaceLanes = kBytesWillDo || std::same_as<Lanes, UnitLanes>;

// As a test for `bitsWhere`, which clamps units where bytes will do.
struct IsWhiteSpace {
    constexpr bool operator()(unsigned short unit) const { return isWhiteSpaceUnit(unit); }

    template <WhiteSpaceLanes Lanes>
    Lanes operator()(Lanes units) const {
        Lanes white{};
        for (unsigned short const unit : kWhiteSpaceUnits)
            white = white | (units == Lanes::filledWith(static_cast<typename Lanes::Lane>(unit)));
        return white;
    }
};

}  // namespace comparer
