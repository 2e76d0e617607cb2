// A byte for each word, by which most words are told from all others without a look into a list.
#pragma once

#include <array>
#include <cstdint>

#include "compare/utf16_string.h"

namespace comparer {

using Fingerprint = std::uint8_t;

// Equal words have equal fingerprints; `word` is not empty.
inline Fingerprint fingerprintOf(Utf16View word) {
    return static_cast<Fingerprint>(word.front() + 5U * word.back() +
                                    11U * static_cast<unsigned>(word.size()));
}

class FingerprintSet {
public:
    bool has(Fingerprint one) const { return (bits_[one / 64] >> one % 64 & 1U) != 0; }
    // Adds it when `isWanted`, branch-free.
    void addIf(bool isWanted, Fingerprint one) {
        bits_[one / 64] |= std::uint64_t{isWanted ? 1U : 0U} << one % 64;
    }
    void add(Fingerprint one) { addIf(true, one); }

private:
    std::array<std::uint64_t, 4> bits_{};
};

}  // namespace comparer
