// SipHash with one round for four units and three at the end (Aumasson and Bernstein, "SipHash: a
// fast short-input PRF", INDOCRYPT 2012). Its own key is not secret here. What resists is its
// state: it is four times as large as what is added to it at a time, so that no last unit leads to
// a key that was chosen before.
#include "compare/hash_key.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace comparer {

namespace {

using State = std::array<std::uint64_t, 4>;

void doRound(State& v) {
    v[0] += v[1];
    v[2] += v[3];
    v[1] = std::rotl(v[1], 13) ^ v[0];
    v[3] = std::rotl(v[3], 16) ^ v[2];
    v[0] = std::rotl(v[0], 32) + v[3];
    v[2] += v[1];
    v[1] = std::rotl(v[1], 17) ^ v[2];
    v[3] = std::rotl(v[3], 21) ^ v[0];
    v[2] = std::rotl(v[2], 32);
}

void add(State& v, std::uint64_t block) {
    v[3] ^= block;
    doRound(v);
    v[0] ^= block;
}

}  // namespace

HashKey keyOf(std::span<Utf16View const> texts) {
    State v{0x736f6d6570736575, 0x646f72616e646f6d, 0x6c7967656e657261, 0x7465646279746573};
    for (Utf16View text : texts) {
        add(v, text.size());
        while (!text.empty()) {
            std::uint64_t block = 0;
            auto const units = std::min(text.size(), sizeof block / sizeof text[0]);
            std::memcpy(&block, text.data(), units * sizeof text[0]);
            add(v, block);
            text.remove_prefix(units);
        }
    }
    v[2] ^= 0xFF;
    for (int i = 0; i < 3; ++i)
        doRound(v);
    return {v[0] ^ v[1], v[2] ^ v[3]};
}

}  // namespace comparer
