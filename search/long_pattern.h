// A long text, made ready to be held against many others: whether the edit distance is within a
// limit. Words can be left out of it, and come back at little cost.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "compare/bit_parallel_distance.h"
#include "compare/bit_parallel_step.h"
#include "compare/text_limit.h"
#include "compare/utf16_string.h"

namespace comparer {

class LongPattern {
public:
    // Of kMaxTextLength units in all, at most.
    explicit LongPattern(std::span<Utf16View const> words);

    // By the number of the word. Each is called once, in turns.
    void leaveOut(unsigned long word) { flip(word, true); }
    void takeBack(unsigned long word) { flip(word, false); }

    // True when the distance between what is not left out and `text` is at most `limit`.
    bool isWithin(unsigned long limit, Pieces const& text);

private:
    static constexpr unsigned kBlockRows = 64;
    static constexpr unsigned kMostBlocks = (kMaxTextLength + kBlockRows - 1) / kBlockRows;
    using BlockSet = std::uint32_t;  // a bit a block
    static_assert(kMostBlocks < 32);

    // 64 rows of the matrix, without those that are left out.
    struct Block {
        BlockColumn column;
        Rows64 leftOut = 0;
        unsigned rows = kBlockRows;
    };
    using Blocks = std::array<Block, kMostBlocks>;

    // The two ways to find the block of a row that only grows: with all rows in place, and without
    // those that are left out.
    class PlainCursor;
    class Cursor;

    void flip(unsigned long word, bool isOut);
    void restore();
    void addChanged(BlockSet bit);
    template <bool kIsWhole>
    bool isWithin(unsigned long limit, Pieces const& text);
    // Goes on by a unit in the blocks of `band`. D0 is worked out in `wanted`, which is one of
    // them.
    template <bool kIsWhole>
    void step(Rows64 const* rows, BlockSet band, unsigned wanted);
    template <bool kIsWhole>
    static Carry stepAll(std::span<Block> blocks, Rows64 const* rows, Carry carry);
    template <bool kIsWhole>
    static void stepBlock(Block& block, Rows64 rows, Carry& carry);

    std::vector<std::uint16_t> starts_;  // of the words, and the end
    unsigned blockCount_ = 0;
    MatchBlocks matches_;  // behind the rows of a unit, a bit for each block that has one
    Blocks blocks_;
    BlockSet present_ = 0;    // those with a row that is not left out
    BlockSet changed_ = 0;    // those that may not be as they were at first
    unsigned long rows_ = 0;  // that are not left out
};

}  // namespace comparer
