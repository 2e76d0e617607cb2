// The one answer to which units separate words, for one unit and for sixteen at once.
#pragma once

#include "compare/unit_lanes.h"

// Tab, line feed, carriage return and space, and no other: a no-break space or a form feed belongs
// to a word.
inline constexpr unsigned short kWhiteSpaceUnits[] = {9, 10, 13, 32};

constexpr bool isWhiteSpaceUnit(unsigned short unit) {
    constexpr unsigned kFirst = kWhiteSpaceUnits[0];
    constexpr unsigned kLast = kWhiteSpaceUnits[3];
    constexpr unsigned kMask = [] {
        unsigned mask = 0;
        for (unsigned const white : kWhiteSpaceUnits)
            mask |= 1U << (white - kFirst);
        return mask;
    }();
    unsigned const place = unit - kFirst;
    return place <= kLast - kFirst && ((kMask >> place) & 1U) != 0;
}

// As a test for `bitsWhere`.
struct IsWhiteSpace {
    constexpr bool operator()(unsigned short unit) const { return isWhiteSpaceUnit(unit); }

    ByteLanes operator()(ByteLanes units) const {
        ByteLanes white{};
        for (unsigned short const unit : kWhiteSpaceUnits)
            white = white | (units == ByteLanes::filledWith(static_cast<std::uint8_t>(unit)));
        return white;
    }
};
