// Let r and c be the lengths, and a units of each be partners, of which m are equal. That is
// r - a + c - a + a - m edits, or r - c and 2 for each unit of the short text without a partner and
// 1 for each with an unequal one. Rows of the long text that are passed over cost nothing more, so
// of all ways that have cost the same the one that has used the fewest rows is the best:
//
//   reach[k], the fewest rows for the units so far at a cost of up to k, is the least of
//       the next row from reach[k] on with the same unit, and one
//       the next row from reach[k - 1] on, and one
//       reach[k - 2]
//
// Where there are rows enough for all units to come, these can cost 1 each.
#include "search/sparse_alignment.h"

#include <algorithm>
#include <bit>
#include <cassert>

#include "compare/unit_bits.h"

namespace {

constexpr unsigned long kNoRow = 64 * (kMaxTextLength / 64 + 1) - 1;

}  // namespace

SparseAlignment::SparseAlignment(std::span<Utf16View const> words) : blocks_(1) {
    starts_.reserve(words.size() + 1);
    unsigned long units = 0;
    for (Utf16View const word : words) {
        starts_.push_back(static_cast<unsigned short>(units));
        units += word.size();
    }
    assert(units <= kMaxTextLength);
    starts_.push_back(static_cast<unsigned short>(units));
    slots_.resize(std::bit_ceil(2 * units + 1));
    unsigned long row = 0;
    for (unsigned long word = 0; word < words.size(); ++word) {
        for (unsigned short const unit : words[word]) {
            addRow(unit, row++);
        }
        flip(word);
    }
}

unsigned long SparseAlignment::slotOf(unsigned short unit) const {
    unsigned long const mask = slots_.size() - 1;
    unsigned long slot = (unit ^ unit >> 3U) & mask;
    while (slots_[slot] != 0 && blocks_[slots_[slot]].unit != unit)
        slot = (slot + 1) & mask;
    return slot;
}

void SparseAlignment::addRow(unsigned short unit, unsigned long row) {
    auto const number = static_cast<unsigned short>(row / kBlockRows);
    auto const added = static_cast<unsigned short>(blocks_.size());
    unsigned short& first = slots_[slotOf(unit)];
    if (first == 0) {
        first = added;
        blocks_.push_back({0, number, 0, unit, added});
    } else if (unsigned short& last = blocks_[first].last; blocks_[last].number != number) {
        blocks_[last].next = added;
        last = added;
        blocks_.push_back({0, number, 0, 0, 0});
    }
    blocks_[blocks_[first].last].rows |= std::uint64_t{1} << row % kBlockRows;
}

unsigned long SparseAlignment::nextOf(unsigned short firstBlock, unsigned long row) const {
    for (unsigned short at = firstBlock; at != 0; at = blocks_[at].next) {
        Block const& block = blocks_[at];
        unsigned long const begin = block.number * kBlockRows;
        if (begin + kBlockRows <= row) continue;
        std::uint64_t bits = block.rows & left_[block.number];
        if (begin < row) bits &= ~std::uint64_t{0} << (row - begin);
        if (bits != 0) return begin + static_cast<unsigned long>(std::countr_zero(bits)) + 1;
    }
    return kNoRow;
}

unsigned long SparseAlignment::next(unsigned long row) const {
    unsigned long number = row / kBlockRows;
    std::uint64_t bits = left_[number] & ~std::uint64_t{0} << row % kBlockRows;
    while (bits == 0) {
        if (++number == left_.size()) return kNoRow;
        bits = left_[number];
    }
    return number * kBlockRows + static_cast<unsigned long>(std::countr_zero(bits)) + 1;
}

void SparseAlignment::flip(unsigned long word) {
    for (unsigned long row = starts_[word]; row < starts_[word + 1];) {
        unsigned long const end =
            std::min<unsigned long>(starts_[word + 1], (row / kBlockRows + 1) * kBlockRows);
        left_[row / kBlockRows] ^= lowBits(end - row) << row % kBlockRows;
        row = end;
    }
}

bool SparseAlignment::isWithin(unsigned long spare, Pieces const& text) const {
    assert(spare <= kMostSpare);
    std::array<unsigned long, kMostSpare + 1> reach;
    std::fill_n(reach.begin(), spare + 1, 0);
    unsigned long const rowsLeft = starts_.back() - leftOut_;
    unsigned long toCome = text.units;
    for (Utf16View const piece : text.pieces) {
        for (unsigned short const unit : piece) {
            if (toCome <= spare && reach[spare - toCome] + toCome <= rowsLeft) return true;
            --toCome;
            unsigned short const firstBlock = slots_[slotOf(unit)];
            for (unsigned long k = spare;; --k) {
                unsigned long least = nextOf(firstBlock, reach[k]);
                if (k >= 1) least = std::min(least, next(reach[k - 1]));
                if (k >= 2) least = std::min(least, reach[k - 2]);
                reach[k] = least;
                if (k == 0) break;
            }
            if (reach[spare] == kNoRow) return false;
        }
    }
    return true;
}
