// Sixteen bytes that are worked on at once. All arithmetic saturates: it stops at 0 and at 255.
//
// ByteLanes is the form for this processor. PlainByteLanes does the same with loops.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace near_text {

constexpr std::size_t kByteLanes = 16;

struct PlainByteLanes {
    std::array<std::uint8_t, kByteLanes> lanes;

    static PlainByteLanes load(std::uint8_t const* bytes) {
        PlainByteLanes loaded;
        std::memcpy(loaded.lanes.data(), bytes, kByteLanes);
        return loaded;
    }
    static PlainByteLanes all(std::uint8_t byte) {
        PlainByteLanes filled;
        filled.lanes.fill(byte);
        return filled;
    }
    PlainByteLanes plus(PlainByteLanes const& other) const {
        return each(other, [](unsigned a, unsigned b) { return std::min(a + b, 255U); });
    }
    PlainByteLanes minus(PlainByteLanes const& other) const {
        return each(other, [](unsigned a, unsigned b) { return a - std::min(a, b); });
    }
    // The lanes that are 0, the first one in the lowest bit.
    unsigned zeros() const {
        unsigned mask = 0;
        for (std::size_t i = 0; i < kByteLanes; ++i)
            mask |= (lanes[i] == 0 ? 1U : 0U) << i;
        return mask;
    }
    // Of all lanes. Does not saturate.
    unsigned sum() const {
        unsigned total = 0;
        for (unsigned const lane : lanes)
            total += lane;
        return total;
    }

private:
    template <class Operation>
    PlainByteLanes each(PlainByteLanes const& other, Operation operation) const {
        PlainByteLanes result;
        for (std::size_t i = 0; i < kByteLanes; ++i)
            result.lanes[i] = static_cast<std::uint8_t>(operation(lanes[i], other.lanes[i]));
        return result;
    }
};

#ifdef __SSE2__
struct ByteLanes {
    __m128i lanes;

    static ByteLanes load(std::uint8_t const* bytes) {
        ByteLanes loaded;
        std::memcpy(&loaded.lanes, bytes, kByteLanes);
        return loaded;
    }
    static ByteLanes all(std::uint8_t byte) { return {_mm_set1_epi8(static_cast<char>(byte))}; }
    ByteLanes plus(ByteLanes other) const { return {_mm_adds_epu8(lanes, other.lanes)}; }
    ByteLanes minus(ByteLanes other) const { return {_mm_subs_epu8(lanes, other.lanes)}; }
    unsigned zeros() const {
        __m128i const isZero = _mm_cmpeq_epi8(lanes, _mm_setzero_si128());
        return static_cast<unsigned>(_mm_movemask_epi8(isZero));
    }
    unsigned sum() const {
        __m128i const halves = _mm_sad_epu8(lanes, _mm_setzero_si128());
        __m128i const total = _mm_add_epi32(halves, _mm_srli_si128(halves, 8));
        return static_cast<unsigned>(_mm_cvtsi128_si32(total));
    }
};
#else
using ByteLanes = PlainByteLanes;
#endif

}  // namespace near_text
