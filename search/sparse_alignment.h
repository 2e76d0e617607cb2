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
#include "compare/utf16_string.h"

class SparseAlignment {
public:
    static constexpr unsigned long kMostSpare = 30;

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
    static constexpr unsigned long kBlockRows = 64;

    // The rows of a unit within a block of them that it is in.
    struct Block {
        std::uint64_t rows;
        unsigned short number;
        unsigned short next;  // of the same unit: its place among all blocks; 0 is none
        // Of the first one of a unit.
        unsigned short unit;
        unsigned short last;
    };

    unsigned long slotOf(unsigned short unit) const;
    void addRow(unsigned short unit, unsigned long row);
    // Both give the row behind the first one that is not left out, from `row` on.
    unsigned long nextOf(unsigned short firstBlock, unsigned long row) const;
    unsigned long next(unsigned long row) const;
    unsigned long unitsOf(unsigned long word) const {
        return static_cast<unsigned long>(starts_[word + 1] - starts_[word]);
    }
    void flip(unsigned long word);

    std::vector<unsigned short> starts_;  // of the words, and the end
    std::vector<unsigned short> slots_;   // a table: the first block of a unit, or 0
    std::vector<Block> blocks_;           // of all units, behind the one that stands for none
    // A bit for each row that is not left out; the last one is never set.
    std::array<std::uint64_t, kMaxTextLength / kBlockRows + 1> left_{};
    unsigned long leftOut_ = 0;  // units
};
