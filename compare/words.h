// The words of a text: its longest runs of units that are not whitespace.
//
//   units   r e d   b a l l . .      blocks of 64; a word may reach into the next one
//   white   0 0 0 1 0 0 0 0 1 1      a word starts at a 0, and ends before the next 1
#pragma once

#include <bit>

#include "compare/unit_bits.h"
#include "compare/utf16_string.h"
#include "compare/white_space.h"

// Calls `use(word)` for each word, in text order, repeats included, until `use` gives false. False
// when it did. NUL is a unit like any other here.
template <class Use>
bool forEachWordWhile(Utf16View text, Use&& use) {
    unsigned short const* open = nullptr;  // where a word starts that is not yet ended
    for (unsigned long block = 0; block < text.size(); block += kBlockUnits) {
        unsigned short const* const units = text.data() + block;
        std::uint64_t const present = lowBits(text.size() - block);
        std::uint64_t const white =
            bitsWhere({units, text.size() - block}, IsWhiteSpace()) | ~present;
        std::uint64_t rest = ~std::uint64_t{0};  // the units not yet passed
        while (true) {
            if (open == nullptr) {
                std::uint64_t const starts = ~white & rest;
                if (starts == 0) break;
                open = units + std::countr_zero(starts);
                rest &= ~(starts ^ (starts - 1));  // the bits above the start
            }
            std::uint64_t const ends = white & rest;
            if (ends == 0) break;
            unsigned short const* const end = units + std::countr_zero(ends);
            if (!use(Utf16View(open, static_cast<unsigned long>(end - open)))) return false;
            open = nullptr;
            rest &= ~(ends ^ (ends - 1));
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
