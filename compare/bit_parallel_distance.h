// The edit distance of two texts, told how much of it matters: many cells of the matrix in one
// step.
//
// All edits cost 1.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "compare/utf16_string.h"

namespace comparer {

// A text in pieces, taken as if they were joined. A piece may be empty. What it refers to outlives
// it.
struct Pieces {
    std::span<Utf16View const> pieces;
    unsigned long units = 0;  // of all together
    // The pieces are parts of one text that can be read up to here, which makes them quicker to
    // join; null where they are not.
    unsigned short const* textEnd = nullptr;

    Pieces() = default;
    Pieces(std::span<Utf16View const> some, unsigned long unitsOfAll,
           unsigned short const* endOfText = nullptr)
        : pieces(some), units(unitsOfAll), textEnd(endOfText) {}
    explicit Pieces(Utf16View const& only) : pieces(&only, 1), units(only.size()) {}
};

// What the lengths alone tell of whether a distance is within `limit`: it is at least their
// difference, and at most the greater one.
inline std::optional<bool> isWithinByLengths(unsigned long limit, unsigned long first,
                                             unsigned long second) {
    auto const [shorter, longer] = std::minmax(first, second);
    if (longer <= limit) return true;
    if (longer - shorter > limit) return false;
    return {};
}

using Rows64 = std::uint64_t;
__extension__ using Rows128 = unsigned __int128;

// For each unit of a pattern, the rows in which it stands, one bit each: the pattern match vector
// (Peq). `Rows` is Rows64 or Rows128, and the pattern has at most as many units. Any of the 65,536
// units finds its place in an open table in a step or two.
template <class Rows>
class MatchVector {
public:
    static constexpr unsigned long kRows = 8 * sizeof(Rows);

    MatchVector() { clear(); }

    void clear() {
        slots_.fill(0);
        units_[0] = kNoUnit;
        rows_[0] = rows_[1] = 0;
        count_ = 0;
    }

    // Sets `row`, which is below kRows, for the unit.
    void add(unsigned short unit, unsigned long row) {
        assert(row < kRows);
        std::uint8_t& slot = slots_[slotOf(unit)];
        // All is written whether the unit is new or not: branch-free.
        count_ += slot == 0 ? 1U : 0U;
        unsigned const place = slot == 0 ? count_ : slot;
        slot = static_cast<std::uint8_t>(place);
        units_[place] = unit;
        rows_[place] |= Rows{1} << row;
        rows_[count_ + 1] = 0;
    }

    Rows rowsOf(unsigned short unit) const { return rows_[slots_[slotOf(unit)]]; }

    // Takes the rows of `other`, which has the same units in the same order.
    void copyRows(MatchVector const& other) {
        std::copy_n(other.rows_.begin(), count_ + 1, rows_.begin());
    }

    // Takes out `count` rows from `first` on; the rows above move down.
    void removeRows(unsigned long first, unsigned long count) {
        assert(first < kRows);
        Rows const below = (Rows{1} << first) - 1;
        for (unsigned i = 1; i <= count_; ++i) {
            Rows const moved = count < kRows ? rows_[i] >> count : 0;
            rows_[i] = (rows_[i] & below) | (moved & ~below);
        }
    }

private:
    static constexpr unsigned kSlots = 2 * kRows;
    static constexpr std::uint32_t kNoUnit = 0x10000;

    unsigned slotOf(unsigned short unit) const {
        unsigned slot = (unit ^ unit >> 3U) % kSlots;  // letters of one script are spread
        // Another unit's: 0 is this one's, and from kNoUnit on it is free. One test that hardly
        // ever succeeds, where two would be guessed wrong.
        while ((units_[slots_[slot]] ^ unit) - 1U < kNoUnit - 1U)
            slot = (slot + 1) % kSlots;
        return slot;
    }

    std::array<std::uint8_t, kSlots> slots_;      // a place among the units, from 1; 0 is free
    std::array<std::uint32_t, kRows + 1> units_;  // behind one that is none, which has no rows
    std::array<Rows, kRows + 2> rows_;            // by place; the next one is cleared beforehand
    unsigned count_;
};

// One column of the matrix in a block of 64 rows. Before the first unit of the text each row is one
// more edit.
struct BlockColumn {
    std::uint64_t VP = ~std::uint64_t{0};
    std::uint64_t VN = 0;
};

// True when the distance between the pattern (of `rows` units, as many as it may have at most) and
// the text is at most `limit`. Allocates nothing. The work is a few steps for each unit of the
// text, and ends when the answer is certain.
template <class Rows>
bool isWithin(unsigned long limit, MatchVector<Rows> const& pattern, unsigned long rows,
              Pieces text);

// Works on texts of any length, and keeps its memory from one call to the next: some 25 bytes for
// each unit of the pattern.
class BandedDistance {
public:
    // True when the distance is at most `limit`.
    bool isWithin(unsigned long limit, Pieces first, Pieces second);

    // The same for a pattern that is the same in all such calls, and is made ready no more often
    // than texts of isWithin come between.
    bool isWithinOfSame(unsigned long limit, Pieces pattern, Pieces text);

    unsigned long between(Utf16View first, Utf16View second);

private:
    // The distance when it is at most `limit`, else a greater number than `limit`. Where only the
    // answer counts, any number on the same side of the limit.
    unsigned long upTo(unsigned long limit, bool isAnswerEnough, Pieces first, Pieces second);
    // The same for the pattern that fills `matches_`, with `rows` units.
    unsigned long upToOfFilled(unsigned long limit, bool isAnswerEnough, unsigned long rows,
                               Pieces text);

    void fillMatches(Pieces pattern);

    // By block of 64 rows.
    std::vector<MatchVector<Rows64>> matches_;
    std::vector<BlockColumn> columns_;
    bool isOfSame_ = false;  // what fills `matches_`
};

// True when the distance of two texts of any length is at most `limit`. Allocates when both have
// more than 64 units.
bool isWithin(unsigned long limit, Pieces first, Pieces second);

}  // namespace comparer
