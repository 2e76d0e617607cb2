// A text in pieces, unit by unit.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>

#include "compare/bit_parallel_distance.h"

namespace comparer {

// Copies at least kWide units, if so many can be read; `out` has room for them, and for the piece.
// No loop for words of usual length: where one ends is hard to guess.
inline constexpr unsigned long kWide = 16;
inline void copyPiece(unsigned short* out, Utf16View piece, bool isWideReadable) {
    if (!isWideReadable) {
        std::copy(piece.begin(), piece.end(), out);
        return;
    }
    std::memcpy(out, piece.data(), kWide * sizeof *out);
    if (piece.size() > kWide) std::copy(piece.begin() + kWide, piece.end(), out + kWide);
}

// Calls `use` for each unit of the text, until it gives false; false when it did. Pieces are joined
// some at a time, so that one loop runs over many of them; inlined, what `use` counts stays in a
// register.
template <class Use>
[[gnu::always_inline]] inline bool forEachUnitWhile(Pieces const& text, Use&& use) {
    constexpr unsigned long kJoined = 128;
    std::array<unsigned short, kJoined + kWide> joined;
    auto const isWideReadable = [&text](Utf16View piece) {
        return text.textEnd != nullptr &&
               text.textEnd - piece.data() >= static_cast<std::ptrdiff_t>(kWide);
    };
    for (auto piece = text.pieces.begin(); piece != text.pieces.end();) {
        unsigned long count = 0;
        while (text.pieces.size() > 1 && piece != text.pieces.end() &&
               count + piece->size() <= kJoined) {
            copyPiece(joined.data() + count, *piece, isWideReadable(*piece));
            count += piece->size();
            ++piece;
        }
        // A piece that is longer, or alone, is taken as it is.
        Utf16View const part =
            count != 0 || piece == text.pieces.end() ? Utf16View(joined.data(), count) : *piece++;
        for (unsigned short const unit : part) {
            if (!use(unit)) return false;
        }
    }
    return true;
}

}  // namespace comparer
