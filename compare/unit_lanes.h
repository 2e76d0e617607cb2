// Units and bytes side by side, in vectors: the one place where vector instructions stand. Each
// type has a plain form, which machines without such instructions use.
//
// `==` gives all ones in the lanes that are equal and 0 in the others. To count, such lanes are
// subtracted from a sum that starts at 0. Lanes made with {} are 0.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

inline constexpr unsigned long kUnitLanes = 8;
inline constexpr unsigned long kByteLanes = 16;

namespace plain_lanes {

template <class Lane, unsigned long kCount>
struct Lanes {
    std::array<Lane, kCount> lane;

    static Lanes load(Lane const* at) {
        Lanes lanes;
        std::copy_n(at, kCount, lanes.lane.begin());
        return lanes;
    }
    static Lanes filledWith(Lane value) {
        Lanes lanes;
        lanes.lane.fill(value);
        return lanes;
    }

    friend Lanes operator==(Lanes const& a, Lanes const& b) {
        return each(a, b, [](unsigned x, unsigned y) { return x == y ? ~0U : 0U; });
    }
    friend Lanes operator|(Lanes const& a, Lanes const& b) {
        return each(a, b, [](unsigned x, unsigned y) { return x | y; });
    }
    friend Lanes operator&(Lanes const& a, Lanes const& b) {
        return each(a, b, [](unsigned x, unsigned y) { return x & y; });
    }
    friend Lanes operator^(Lanes const& a, Lanes const& b) {
        return each(a, b, [](unsigned x, unsigned y) { return x ^ y; });
    }
    friend Lanes operator-(Lanes const& a, Lanes const& b) {
        return each(a, b, [](unsigned x, unsigned y) { return x - y; });
    }
    // Each lane moved down by `kBits`.
    template <int kBits>
    friend Lanes shiftedDown(Lanes const& a) {
        return each(a, a, [](unsigned x, unsigned) { return x >> unsigned{kBits}; });
    }

private:
    template <class Combine>
    static Lanes each(Lanes const& a, Lanes const& b, Combine&& combine) {
        Lanes result;
        for (unsigned long i = 0; i < kCount; ++i)
            result.lane[i] = static_cast<Lane>(combine(a.lane[i], b.lane[i]));
        return result;
    }
};

using UnitLanes = Lanes<unsigned short, kUnitLanes>;
using ByteLanes = Lanes<std::uint8_t, kByteLanes>;

// The bytes of lanes that are below 256, those of `a` first.
inline ByteLanes packed(UnitLanes const& a, UnitLanes const& b) {
    ByteLanes bytes;
    for (unsigned long i = 0; i < kUnitLanes; ++i) {
        bytes.lane[i] = static_cast<std::uint8_t>(a.lane[i]);
        bytes.lane[i + kUnitLanes] = static_cast<std::uint8_t>(b.lane[i]);
    }
    return bytes;
}

// The units that are below 127 as bytes, those of `a` first; for any other unit a byte from 127 on.
inline ByteLanes clamped(UnitLanes const& a, UnitLanes const& b) {
    ByteLanes bytes;
    for (unsigned long i = 0; i < kByteLanes; ++i) {
        unsigned const unit = i < kUnitLanes ? a.lane[i] : b.lane[i - kUnitLanes];
        bool const isNegative = unit >= 0x8000;  // as a signed number, and its byte likewise
        unsigned const least = isNegative ? std::max(unit, 0xFF80U) : std::min(unit, 0x7FU);
        bytes.lane[i] = static_cast<std::uint8_t>(least);
    }
    return bytes;
}

// One bit a lane, of lanes that are all ones or 0.
inline unsigned bitsOf(ByteLanes const& lanes) {
    unsigned bits = 0;
    for (unsigned i = 0; i < kByteLanes; ++i)
        bits |= (lanes.lane[i] & 1U) << i;
    return bits;
}

// The same, those of `a` first.
inline unsigned bitsOf(UnitLanes const& a, UnitLanes const& b) {
    unsigned bits = 0;
    for (unsigned i = 0; i < kUnitLanes; ++i)
        bits |= (a.lane[i] & 1U) << i | (b.lane[i] & 1U) << (i + kUnitLanes);
    return bits;
}

// Four numbers, each below 2^15.
struct Four {
    std::array<std::uint32_t, 4> number;

    static Four load(std::uint32_t const* at) { return {{at[0], at[1], at[2], at[3]}}; }
    // The sums of the bytes of each.
    static Four sumsOf(std::array<ByteLanes, 4> const& bytes) {
        Four sums{};
        for (unsigned i = 0; i < 4; ++i) {
            for (unsigned const byte : bytes[i].lane)
                sums.number[i] += byte;
        }
        return sums;
    }
    // By how much the numbers of `a` are greater than those of `b`, where they are, all together.
    friend unsigned long excess(Four const& a, Four const& b) {
        unsigned long sum = 0;
        for (unsigned i = 0; i < 4; ++i)
            sum += a.number[i] - std::min(a.number[i], b.number[i]);
        return sum;
    }
};

}  // namespace plain_lanes

#if defined(__SSE2__)
namespace sse_lanes {

struct UnitLanes {
    __m128i lanes;

    static UnitLanes load(unsigned short const* at) {
        return {_mm_loadu_si128(reinterpret_cast<__m128i const*>(at))};
    }
    static UnitLanes filledWith(unsigned short unit) {
        return {_mm_set1_epi16(static_cast<short>(unit))};
    }
    friend UnitLanes operator==(UnitLanes a, UnitLanes b) {
        return {_mm_cmpeq_epi16(a.lanes, b.lanes)};
    }
    friend UnitLanes operator|(UnitLanes a, UnitLanes b) {
        return {_mm_or_si128(a.lanes, b.lanes)};
    }
    friend UnitLanes operator&(UnitLanes a, UnitLanes b) {
        return {_mm_and_si128(a.lanes, b.lanes)};
    }
    friend UnitLanes operator^(UnitLanes a, UnitLanes b) {
        return {_mm_xor_si128(a.lanes, b.lanes)};
    }
    template <int kBits>
    friend UnitLanes shiftedDown(UnitLanes a) {
        return {_mm_srli_epi16(a.lanes, kBits)};
    }
};

struct ByteLanes {
    __m128i lanes;

    static ByteLanes load(std::uint8_t const* at) {
        return {_mm_loadu_si128(reinterpret_cast<__m128i const*>(at))};
    }
    static ByteLanes filledWith(std::uint8_t byte) {
        return {_mm_set1_epi8(static_cast<char>(byte))};
    }
    friend ByteLanes operator|(ByteLanes a, ByteLanes b) {
        return {_mm_or_si128(a.lanes, b.lanes)};
    }
    friend ByteLanes operator&(ByteLanes a, ByteLanes b) {
        return {_mm_and_si128(a.lanes, b.lanes)};
    }
    friend ByteLanes operator==(ByteLanes a, ByteLanes b) {
        return {_mm_cmpeq_epi8(a.lanes, b.lanes)};
    }
    friend ByteLanes operator-(ByteLanes a, ByteLanes b) {
        return {_mm_sub_epi8(a.lanes, b.lanes)};
    }
};

inline ByteLanes packed(UnitLanes a, UnitLanes b) {
    return {_mm_packus_epi16(a.lanes, b.lanes)};
}

inline ByteLanes clamped(UnitLanes a, UnitLanes b) {
    return {_mm_packs_epi16(a.lanes, b.lanes)};
}

inline unsigned bitsOf(ByteLanes lanes) {
    return static_cast<unsigned>(_mm_movemask_epi8(lanes.lanes));
}

inline unsigned bitsOf(UnitLanes a, UnitLanes b) {
    return static_cast<unsigned>(_mm_movemask_epi8(_mm_packs_epi16(a.lanes, b.lanes)));
}

struct Four {
    __m128i numbers;

    static Four load(std::uint32_t const* at) {
        return {_mm_loadu_si128(reinterpret_cast<__m128i const*>(at))};
    }
    static Four sumsOf(std::array<ByteLanes, 4> const& bytes) {
        // Two sums of eight bytes each, then all of them side by side, then each two added.
        auto const halves = [](ByteLanes b) { return _mm_sad_epu8(b.lanes, _mm_setzero_si128()); };
        __m128i const first = _mm_packs_epi32(halves(bytes[0]), halves(bytes[1]));
        __m128i const second = _mm_packs_epi32(halves(bytes[2]), halves(bytes[3]));
        return {_mm_madd_epi16(_mm_packs_epi32(first, second), _mm_set1_epi16(1))};
    }
    friend unsigned long excess(Four a, Four b) {
        __m128i sums = _mm_subs_epu16(a.numbers, b.numbers);
        sums = _mm_add_epi32(sums, _mm_shuffle_epi32(sums, _MM_SHUFFLE(1, 0, 3, 2)));
        sums = _mm_add_epi32(sums, _mm_shuffle_epi32(sums, _MM_SHUFFLE(2, 3, 0, 1)));
        return static_cast<unsigned>(_mm_cvtsi128_si32(sums));
    }
};

}  // namespace sse_lanes

namespace lanes = sse_lanes;
#else
namespace lanes = plain_lanes;
#endif

using lanes::ByteLanes;
using lanes::UnitLanes;
