// 64 units at a time. A run of whitespace starts where the unit before is of another kind.
#include "compare/text_measures.h"

#include <bit>

namespace comparer {

namespace {

struct IsNul {
    bool operator()(unsigned short unit) const { return unit == 0; }
    ByteLanes operator()(ByteLanes units) const { return units == ByteLanes(); }
};

unsigned long countBits(std::uint64_t bits) {
    return bits == 0 ? 0 : static_cast<unsigned long>(std::popcount(bits));
}

}  // namespace

void TextMeasures::measure() {
    unsigned long whitespace = 0;
    unsigned long runs = 0;
    std::uint64_t wasWhite = 0;  // 1 when the unit before the block is whitespace
    for (unsigned long at = 0; at < text.size(); at += kBlockUnits) {
        Utf16View const block(text.data() + at, text.size() - at);
        std::uint64_t const nuls = bitsWhere(block, IsNul());
        if (nuls != 0) {
            text = {text.data(), at + static_cast<unsigned long>(std::countr_zero(nuls))};
            if (text.size() == at) break;
        }
        std::uint64_t const white = bitsWhere(block, IsWhiteSpace()) & lowBits(text.size() - at);
        whitespace += countBits(white);
        runs += countBits(white & ~(white << 1U | wasWhite));
        wasWhite = white >> (kBlockUnits - 1);
    }
    if (!text.empty()) {
        // Runs and words take turns.
        unsigned long const wordEnds =
            (isWhiteSpaceUnit(text.front()) ? 0U : 1U) + (isWhiteSpaceUnit(text.back()) ? 0U : 1U);
        words = runs + wordEnds - 1;
    }
    collapsedWhitespace = whitespace - runs;
    wordUnits = text.size() - whitespace;
    effectiveLength -= collapsedWhitespace;
}

}  // namespace comparer
