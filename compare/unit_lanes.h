// Units and bytes side by side, in vectors: the one place where vector instructions stand. They are
// those that every 64-bit processor of this family has.
//
// `==` gives all ones in the lanes that are equal and 0 in the others. To count, such lanes are
// subtracted from a sum that starts at 0. Lanes made with {} are 0.
#pragma once

#include <emmintrin.h>

#include <array>
#include <cstdint>

namespace comparer {

inline constexpr unsigned long kUnitLanes = 8;
inline constexpr unsigned long kByteLanes = 16;

struct UnitLanes {
    using Lane = unsigned short;

    __m128i lanes;

    static UnitLanes load(Lane const* at) {
        return {_mm_loadu_si128(reinterpret_cast<__m128i const*>(at))};
    }
    static UnitLanes filledWith(Lane unit) { return {_mm_set1_epi16(static_cast<short>(unit))}; }

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
    // Each lane moved down by `kBits`.
    template <int kBits>
    friend UnitLanes shiftedDown(UnitLanes a) {
        return {_mm_srli_epi16(a.lanes, kBits)};
    }
};

struct ByteLanes {
    using Lane = std::uint8_t;

    __m128i lanes;

    static ByteLanes load(Lane const* at) {
        return {_mm_loadu_si128(reinterpret_cast<__m128i const*>(at))};
    }
    static ByteLanes filledWith(Lane byte) { return {_mm_set1_epi8(static_cast<char>(byte))}; }

    friend ByteLanes operator==(ByteLanes a, ByteLanes b) {
        return {_mm_cmpeq_epi8(a.lanes, b.lanes)};
    }
    friend ByteLanes operator|(ByteLanes a, ByteLanes b) {
        return {_mm_or_si128(a.lanes, b.lanes)};
    }
    friend ByteLanes operator&(ByteLanes a, ByteLanes b) {
        return {_mm_and_si128(a.lanes, b.lanes)};
    }
    friend ByteLanes operator-(ByteLanes a, ByteLanes b) {
        return {_mm_sub_epi8(a.lanes, b.lanes)};
    }
    // These stop at 255 and at 0.
    friend ByteLanes saturatingSum(ByteLanes a, ByteLanes b) {
        return {_mm_adds_epu8(a.lanes, b.lanes)};
    }
    friend ByteLanes saturatingDifference(ByteLanes a, ByteLanes b) {
        return {_mm_subs_epu8(a.lanes, b.lanes)};
    }
    // Of all lanes. Does not saturate.
    friend unsigned sumOf(ByteLanes a) {
        __m128i const halves = _mm_sad_epu8(a.lanes, _mm_setzero_si128());
        __m128i const sum = _mm_add_epi32(halves, _mm_srli_si128(halves, 8));
        return static_cast<unsigned>(_mm_cvtsi128_si32(sum));
    }
};

// The bytes of lanes that are below 256, those of `a` first.
inline ByteLanes packed(UnitLanes a, UnitLanes b) {
    return {_mm_packus_epi16(a.lanes, b.lanes)};
}

// The units that are below kClamped as bytes, those of `a` first; for any other unit a byte from
// there on.
inline constexpr unsigned short kClamped = 127;
inline ByteLanes clamped(UnitLanes a, UnitLanes b) {
    return {_mm_packs_epi16(a.lanes, b.lanes)};
}

// One bit a lane, of lanes that are all ones or 0.
inline unsigned bitsOf(ByteLanes lanes) {
    return static_cast<unsigned>(_mm_movemask_epi8(lanes.lanes));
}

// The same, those of `a` first.
inline unsigned bitsOf(UnitLanes a, UnitLanes b) {
    return static_cast<unsigned>(_mm_movemask_epi8(_mm_packs_epi16(a.lanes, b.lanes)));
}

// Four numbers, each below 2^15.
struct FourLanes {
    __m128i numbers;

    static FourLanes load(std::uint32_t const* at) {
        return {_mm_loadu_si128(reinterpret_cast<__m128i const*>(at))};
    }
    // The sums of the bytes of each.
    static FourLanes sumsOf(std::array<ByteLanes, 4> const& bytes) {
        // Two sums of eight bytes each, then all of them side by side, then each two added.
        auto const halves = [](ByteLanes b) { return _mm_sad_epu8(b.lanes, _mm_setzero_si128()); };
        __m128i const first = _mm_packs_epi32(halves(bytes[0]), halves(bytes[1]));
        __m128i const second = _mm_packs_epi32(halves(bytes[2]), halves(bytes[3]));
        return {_mm_madd_epi16(_mm_packs_epi32(first, second), _mm_set1_epi16(1))};
    }
    // By how much the numbers of `a` are greater than those of `b`, where they are, all together.
    friend unsigned long excess(FourLanes a, FourLanes b) {
        __m128i sums = _mm_subs_epu16(a.numbers, b.numbers);
        sums = _mm_add_epi32(sums, _mm_shuffle_epi32(sums, _MM_SHUFFLE(1, 0, 3, 2)));
        sums = _mm_add_epi32(sums, _mm_shuffle_epi32(sums, _MM_SHUFFLE(2, 3, 0, 1)));
        return static_cast<unsigned>(_mm_cvtsi128_si32(sums));
    }
};

}  // namespace comparer
