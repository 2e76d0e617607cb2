// The one answer to which units part words: for one unit, for eight at once, and for where a word
// ends.
#pragma once

#include <bit>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

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

#if defined(__SSE2__)
// Eight units, each turned into all ones where it is whitespace and into 0 where it is not.
inline __m128i whiteSpaceLanes(__m128i units) {
    __m128i lanes = _mm_setzero_si128();
    for (unsigned short const white : kWhiteSpaceUnits) {
        __m128i const same = _mm_cmpeq_epi16(units, _mm_set1_epi16(static_cast<short>(white)));
        lanes = _mm_or_si128(lanes, same);
    }
    return lanes;
}
#endif

// The first unit of whitespace, or `end`.
inline unsigned short const* findWhiteSpace(unsigned short const* at, unsigned short const* end) {
#if defined(__SSE2__)
    for (; end - at >= 8; at += 8) {
        __m128i const units = _mm_loadu_si128(reinterpret_cast<__m128i const*>(at));
        auto const bits = static_cast<unsigned>(_mm_movemask_epi8(whiteSpaceLanes(units)));
        if (bits != 0) return at + std::countr_zero(bits) / 2;  // two bits a unit
    }
#endif
    while (at != end && !isWhiteSpaceUnit(*at))
        ++at;
    return at;
}
