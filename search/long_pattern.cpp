// The matrix of compare/bit_parallel_distance.cpp, which has a row for each unit of the pattern. As
// that is much longer than most texts, what an edit more or less changes is a few blocks of rows:
//
//   In a block where each cell is one more than the one above it (VP is all ones), a column changes
//   nothing when the row above the block did not grow, and
//       that row fell: all rows of the block fall with it, or
//       the unit does not stand in the block: no row falls, and none grows.
//
// All blocks are like that at first, and most of them stay so. They are passed over.
#include "search/long_pattern.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <utility>

#include "compare/each_unit.h"
#include "compare/unit_bits.h"

namespace comparer {

namespace {

// Without the rows that are left out, which are not all; those behind them move up.
Rows64 without(Rows64 leftOut, Rows64 rows) {
    while (leftOut != 0) {
        int const first = std::countr_zero(leftOut);
        int const count = std::countr_one(leftOut >> first);
        Rows64 const before = lowBits(static_cast<unsigned long>(first));
        rows = (rows & before) | (rows >> count & ~before);
        leftOut = leftOut >> count & ~before;
    }
    return rows;
}

}  // namespace

class LongPattern::PlainCursor {
public:
    explicit PlainCursor(Blocks const&) {}
    unsigned goTo(unsigned long row) {
        row_ = row;
        return static_cast<unsigned>(row / kBlockRows);
    }
    unsigned long place() const { return row_ % kBlockRows; }

private:
    unsigned long row_ = 0;
};

class LongPattern::Cursor {
public:
    explicit Cursor(Blocks const& blocks) : blocks_(blocks), end_(blocks[0].rows) {}
    unsigned goTo(unsigned long row) {
        while (row >= end_)
            end_ += blocks_[++block_].rows;
        row_ = row;
        return block_;
    }
    unsigned long place() const { return row_ + blocks_[block_].rows - end_; }

private:
    Blocks const& blocks_;
    unsigned block_ = 0;
    unsigned long row_ = 0;
    unsigned long end_;
};

LongPattern::LongPattern(std::span<Utf16View const> words) {
    starts_.reserve(words.size() + 1);
    starts_.push_back(0);
    for (Utf16View const word : words)
        starts_.push_back(static_cast<std::uint16_t>(starts_.back() + word.size()));
    rows_ = starts_.back();
    assert(rows_ <= kMaxTextLength);
    blockCount_ = static_cast<unsigned>((rows_ + kBlockRows - 1) / kBlockRows);
    present_ = static_cast<BlockSet>(lowBits(blockCount_));
    matches_.clear((blockCount_ + 1UL) * kBlockRows);
    unsigned long row = 0;
    for (Utf16View const word : words) {
        for (unsigned short const unit : word)
            matches_.add(unit, row++);
    }
    matches_.markBlocks();
}

void LongPattern::flip(unsigned long word, bool isOut) {
    for (unsigned row = starts_[word]; row < starts_[word + 1];) {
        unsigned const number = row / kBlockRows;
        unsigned const end = std::min<unsigned>(starts_[word + 1], (number + 1) * kBlockRows);
        unsigned const count = end - row;
        Block& block = blocks_[number];
        block.leftOut ^= lowBits(count) << row % kBlockRows;
        block.rows += isOut ? 0 - count : count;
        rows_ += isOut ? 0UL - count : count;
        BlockSet const bit = BlockSet{1} << number;
        present_ = block.rows == 0 ? present_ & ~bit : present_ | bit;
        row = end;
    }
}

void LongPattern::restore() {
    for (; changed_ != 0; changed_ &= changed_ - 1)
        blocks_[static_cast<unsigned>(std::countr_zero(changed_))].column = {};
}

template <bool kIsWhole>
void LongPattern::stepBlock(Block& block, Rows64 rows, Carry& carry) {
    auto& [VP, VN, D0] = block.column;
    if (kIsWhole || block.leftOut == 0) {
        D0 = comparer::step(VP, VN, rows, carry);
    } else {
        D0 = comparer::step(VP, VN, without(block.leftOut, rows), carry, block.rows - 1);
    }
}

// A function of its own, so that its loop has all registers.
template <bool kIsWhole>
[[gnu::noinline]] Carry LongPattern::stepAll(std::span<Block> blocks, Rows64 const* rows,
                                             Carry carry) {
    for (Block& block : blocks)
        stepBlock<kIsWhole>(block, *rows++, carry);
    return carry;
}

void LongPattern::addChanged(BlockSet bit) {
    changed_ |= bit;
    // Blocks in a row take less time than some of them here and there.
    if (2 * static_cast<unsigned>(std::popcount(changed_)) > blockCount_) changed_ = present_;
}

template <bool kIsWhole>
void LongPattern::step(Rows64 const* rows, BlockSet band, unsigned wanted) {
    BlockSet const changed = changed_ & band;
    BlockSet const needed = changed | BlockSet{1} << wanted;
    Carry carry = kTopRow;
    BlockSet toDo = ((static_cast<BlockSet>(rows[blockCount_]) | needed) & band) | (band & -band);
    while (toDo != 0) {
        auto number = static_cast<unsigned>(std::countr_zero(toDo));
        if ((changed >> number & 1U) == 0) {
            Block& block = blocks_[number];
            stepBlock<kIsWhole>(block, rows[number], carry);
            if (~block.column.VP != 0) addChanged(BlockSet{1} << number);
            ++number;
        } else {
            auto const count = static_cast<unsigned>(std::countr_one(changed >> number));
            carry =
                stepAll<kIsWhole>(std::span(blocks_).subspan(number, count), rows + number, carry);
            number += count;
        }
        toDo = toDo >> number << number;
        if (carry.notHP == 0) {
            // Where the last row grew, so may those below.
            BlockSet const below = band >> number << number;
            toDo |= below & -below;
        } else if (carry.HN != 0) {
            BlockSet const next = toDo & needed;
            toDo &= ~((next & -next) - 1);
        }
    }
}

bool LongPattern::isWithin(unsigned long limit, Pieces const& text) {
    if (auto const answer = isWithinByLengths(limit, rows_, text.units)) return *answer;
    return rows_ == starts_.back() ? isWithin<true>(limit, text) : isWithin<false>(limit, text);
}

template <bool kIsWhole>
bool LongPattern::isWithin(unsigned long limit, Pieces const& text) {
    restore();
    unsigned long const columns = text.units;
    LastDiagonal diagonal(limit, rows_, columns);
    auto const [fewer, more] = std::minmax(rows_, columns);
    unsigned long const spare = (limit - (more - fewer)) / 2;
    unsigned long const lead = columns - fewer + spare;  // of columns over rows
    unsigned long const lag = rows_ - fewer + spare;
    std::conditional_t<kIsWhole, PlainCursor, Cursor> top(blocks_), bottom(blocks_), last(blocks_);
    unsigned long column = 0;
    auto const goOn = [&](Rows64 const* rowsOfUnit) {
        unsigned const first = top.goTo(column > lead ? column - lead : 0);
        unsigned const end = bottom.goTo(std::min(column + lag, rows_ - 1)) + 1;
        ++column;
        auto const range = static_cast<BlockSet>(lowBits(end) & ~lowBits(first));
        BlockSet const band = range & present_;
        bool const isOnDiagonal = diagonal.next();
        unsigned const wanted = isOnDiagonal ? last.goTo(diagonal.row()) : first;
        if ((changed_ & band) == range)
            stepAll<kIsWhole>(std::span(blocks_).subspan(first, end - first), rowsOfUnit + first,
                              kTopRow);
        else
            step<kIsWhole>(rowsOfUnit, band, wanted);
        if (!isOnDiagonal) return true;
        diagonal.step(blocks_[wanted].column.D0 >> last.place());
        return !diagonal.isSettled();
    };
    // The next unit's rows are looked for a column ahead, since finding them takes a while.
    Rows64 const* next = nullptr;
    bool const isUnsettled = forEachUnitWhile(text, [&](unsigned short unit) {
        Rows64 const* const rowsOfUnit = std::exchange(next, matches_.rowsOf(unit));
        return rowsOfUnit == nullptr || goOn(rowsOfUnit);
    });
    if (isUnsettled) goOn(next);
    return !diagonal.isAbove();
}

}  // namespace comparer
