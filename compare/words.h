// The words of a text: its longest runs of units that are not whitespace.
//
//   units   r e d   b a l l . .      blocks of 64; a word may reach into the next one
//   white   0 0 0 1 0 0 0 0 1 1
//   edges   1 0 0 1 1 0 0 0 1 0      where it changes: a word starts, ends, the next one starts ...
#pragma once

#include <bit>

#include "compare/unit_bits.h"
#include "compare/utf16_string.h"
#include "compare/white_space.h"

namespace comparer {

// Calls `use(word)` for each word, in text order, repeats included, until `use` gives false. False
// when it did. NUL is a unit like any other here.
template <class Use>
bool forEachWordWhile(Utf16View text, Use&& use) {
    unsigned short const* open = nullptr;  // where a word starts that is not yet ended
    std::uint64_t wasWhite = 1;            // of the unit before the block
    for (unsigned long block = 0; block < text.size(); block += kBlockUnits) {
        unsigned short const* const units = text.data() + block;
        std::uint64_t const present = lowBits(text.size() - block);
        std::uint64_t const white =
            bitsWhere({units, text.size() - block}, IsWhiteSpace()) | ~present;
        std::uint64_t edges = white ^ (white << 1U | wasWhite);
        wasWhite = white >> (kBlockUnits - 1);
        auto const nextEdge = [&edges, units] {
            unsigned short const* const edge = units + std::countr_zero(edges);
            edges &= edges - 1;
            return edge;
        };
        while (edges != 0) {
            if (open == nullptr) {
                open = nextEdge();
                if (edges == 0) break;
            }
            unsigned short const* const end = nextEdge();
            if (!use(Utf16View(open, static_cast<unsigned long>(end - open)))) return false;
            open = nullptr;
        }
    }
    if (open == nullptr) return true;
    return use(Utf16View(open, static_cast<unsigned long>(text.data() + text.size() - open)));
}

template <class Use>
void forEachWord(Utf16View text, Use&& use) {
    forEachWordWhile(text, [&use](Utf16View word) {
        use(word);
        return true;
    });
}

}  // namespace comparer
