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

namespace comparer {

namespace {

// The last row that there is a bit for.
constexpr unsigned long kNoRow = 32 * (kMaxTextLength / 32 + 1) - 1;

}  // namespace

SparseAlignment::SparseAlignment(std::span<Utf16View const> words) {
    starts_.reserve(words.size() + 1);
    unsigned long units = 0;
    for (Utf16View const word : words) {
        starts_.push_back(static_cast<unsigned short>(units));
        units += word.size();
        for (unsigned short const unit : word)
            units_.add(unit);
    }
    assert(units <= kMaxTextLength);
    starts_.push_back(static_cast<unsigned short>(units));
    blocks_.resize(1UL + units_.count());
    std::vector<unsigned short> lasts(blocks_.size());
    unsigned long row = 0;
    for (unsigned long word = 0; word < words.size(); ++word) {
        for (unsigned short const unit : words[word]) {
            auto const first = static_cast<unsigned short>(units_.of(unit));
            addRow(first, lasts[first], row++);
        }
        flip(word);
    }
}

void SparseAlignment::addRow(unsigned short first, unsigned short& last, unsigned long row) {
    auto const number = static_cast<unsigned short>(row / kBlockRows);
    if (last == 0) {
        last = first;
        blocks_[last].number = number;
    } else if (blocks_[last].number != number) {
        auto const added = static_cast<unsigned short>(blocks_.size());
        blocks_[last].next = added;
        last = added;
        blocks_.push_back({0, number, 0});
    }
    blocks_[last].rows |= Rows{1} << row % kBlockRows;
}

unsigned long SparseAlignment::nextOf(unsigned short& firstBlock, unsigned long row) const {
    while (firstBlock != 0 && (blocks_[firstBlock].number + 1) * kBlockRows <= row)
        firstBlock = blocks_[firstBlock].next;
    for (unsigned short at = firstBlock; at != 0; at = blocks_[at].next) {
        Block const& block = blocks_[at];
        unsigned long const begin = block.number * kBlockRows;
        Rows bits = block.rows & left_[block.number];
        if (begin < row) bits &= ~Rows{0} << (row - begin);
        if (bits != 0) return begin + static_cast<unsigned long>(std::countr_zero(bits)) + 1;
    }
    return kNoRow;
}

unsigned long SparseAlignment::next(unsigned long row) const {
    unsigned long number = row / kBlockRows;
    Rows bits = left_[number] & ~Rows{0} << row % kBlockRows;
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
        left_[row / kBlockRows] ^= static_cast<Rows>(lowBits(end - row) << row % kBlockRows);
        row = end;
    }
}

bool SparseAlignment::isWithin(unsigned long spare, Pieces const& text) const {
    assert(spare <= kMostSpare);
    std::array<unsigned long, kMostSpare + 1> reach{};
    unsigned long const rowsLeft = starts_.back() - leftOut_;
    unsigned long toCome = text.units;
    for (Utf16View const piece : text.pieces) {
        for (unsigned short const unit : piece) {
            if (toCome <= spare && reach[spare - toCome] + toCome <= rowsLeft) return true;
            --toCome;
            auto firstBlock = static_cast<unsigned short>(units_.of(unit));
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

}  // namespace comparer
