// The edit distance of a long text and a short one, where few edits are to spare: each unit of the
// long text that finds no partner is an edit anyhow, so what counts is what becomes of the others.
//
// Words can be left out of the long text, and come back at little cost.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "compare/bit_parallel_distance.h"
#include "compare/text_limit.h"
#include "compare/unit_numbers.h"
#include "compare/utf16_string.h"

namespace comparer {

class SparseAlignment {
public:
    static constexpr unsigned long kMostSpare = 5;

    // Of kMaxTextLength units in all, at most.
    explicit SparseAlignment(std::span<Utf16View const> words);

    // By the number of the word. Each is called once, in turns.
    void leaveOut(unsigned long word) {
        flip(word);
        leftOut_ += unitsOf(word);
    }
    void takeBack(unsigned long word) {
        flip(word);
        leftOut_ -= unitsOf(word);
    }

    // True when the distance between what is not left out and `text`, and the length of `text`, are
    // at most `spare` more than the length of what is not left out. `spare` is at most kMostSpare.
    bool isWithin(unsigned long spare, Pieces const& text) const;

private:
    static constexpr unsigned long kBlockRows = 32;
    using Rows = std::uint32_t;

    // The rows of a unit within a block of them that it is in.
    struct Block {
        Rows rows = 0;
        unsigned short number = 0;
        unsigned short next = 0;  // of the same unit: its place among all blocks; 0 is none
    };

    // `first` is the place of the unit's first block, `last` of its last one, or 0.
    void addRow(unsigned short first, unsigned short& last, unsigned long row);
    // Both give the row behind the first one that is not left out, from `row` on. `firstBlock` goes
    // on past the blocks above `row`.
    unsigned long nextOf(unsigned short& firstBlock, unsigned long row) const;
    unsigned long next(unsigned long row) const;
    unsigned long unitsOf(unsigned long word) const {
        return static_cast<unsigned long>(starts_[word + 1] - starts_[word]);
    }
    void flip(unsigned long word);

    std::vector<unsigned short> starts_;  // of the words, and the end
    UnitNumbers units_;
    // The first ones of all units, by number, behind one that stands for none; then all others.
    std::vector<Block> blocks_;
    // A bit for each row that is not left out; the last one is never set.
    std::array<Rows, kMaxTextLength / kBlockRows + 1> left_{};
    unsigned long leftOut_ = 0;  // units
};

}  // namespace comparer
