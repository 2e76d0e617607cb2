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

#include "compare/fixed_buffer.h"
#include "compare/unit_numbers.h"
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
// (Peq). `Rows` is Rows64 or Rows128, and the pattern has at most as many units. All units take the
// same few steps to be looked up, however they are chosen: a part of the unit leads to a page, the
// rest to its rows there. Allocates when they are on many pages, which hardly any text's are.
template <class Rows>
class MatchVector {
public:
    static constexpr unsigned long kRows = 8 * sizeof(Rows);

    MatchVector() : rows_(kFewPages * kPageUnits) { addPage(pageOf_[0]); }

    // Sets `row`, which is below kRows, for the unit.
    void add(unsigned short unit, unsigned long row) {
        assert(row < kRows);
        if (pageOf_[unit / kPageUnits] == 0) [[unlikely]]
            addPage(pageOf_[unit / kPageUnits]);
        unsigned const place = placeOf(unit);
        // Branch-free.
        places_[count_] = static_cast<std::uint16_t>(place);
        count_ += rows_[place] == 0 ? 1U : 0U;
        rows_[place] |= Rows{1} << row;
    }

    Rows rowsOf(unsigned short unit) const { return rows_[placeOf(unit)]; }

    // Keeps the rows as they are now, to have them back after some were taken out.
    void keepRows() {
        for (unsigned i = 0; i < count_; ++i)
            kept_[i] = rows_[places_[i]];
    }
    void takeRowsBack() {
        for (unsigned i = 0; areRowsOut_ && i < count_; ++i)
            rows_[places_[i]] = kept_[i];
        areRowsOut_ = false;
    }

    // Takes out `count` rows from `first` on; the rows above move down.
    void removeRows(unsigned long first, unsigned long count) {
        assert(first < kRows);
        Rows const below = (Rows{1} << first) - 1;
        for (unsigned i = 0; i < count_; ++i) {
            Rows& rows = rows_[places_[i]];
            Rows const moved = count < kRows ? rows >> count : 0;
            rows = (rows & below) | (moved & ~below);
        }
        areRowsOut_ = true;
    }

private:
    static constexpr unsigned kPageUnits = 512 / sizeof(Rows);
    static constexpr unsigned kFewPages = 5;
    static constexpr unsigned kMostPages = kRows + 1;

    unsigned placeOf(unsigned unit) const {
        return pageOf_[unit / kPageUnits] * kPageUnits + unit % kPageUnits;
    }

    void addPage(std::uint8_t& page) {
        if (pages_ == kFewPages) rows_.enlarge(kMostPages * kPageUnits, pages_ * kPageUnits);
        std::fill_n(rows_.data() + pages_ * kPageUnits, kPageUnits, 0);
        page = static_cast<std::uint8_t>(pages_++);
    }

    std::array<std::uint8_t, (1U << 16U) / kPageUnits> pageOf_{};  // by the upper part of a unit
    // By page, the first one without any rows, and by the lower part.
    FixedBuffer<Rows, 1UL * kFewPages * kPageUnits> rows_;
    unsigned pages_ = 0;
    std::array<std::uint16_t, kRows + 1> places_;  // of the pattern's units, in the rows
    unsigned count_ = 0;                           // of these
    std::array<Rows, kRows> kept_;
    bool areRowsOut_ = false;
};

// The same for any number of rows, in blocks of 64. The first different units have a row for each
// block; of the others, of which few texts have any, only blocks where they stand take memory.
class MatchBlocks {
public:
    // For a pattern of so many rows.
    void clear(unsigned long rows) {
        blocks_ = (rows + kRows - 1) / kRows;
        numbers_.clear();
        rows_.assign((kLikelyUnits + 1) * blocks_, 0);
        others_.clear();
        lastOf_.clear();
        isMarked_ = false;
    }

    void add(unsigned short unit, unsigned long row) {
        unsigned const number = numbers_.add(unit);
        unsigned long const begin = number * blocks_;
        if (number >= kMostUnits) [[unlikely]]
            return addToOthers(number, row);
        if (begin == rows_.size()) rows_.resize(2 * begin);
        rows_[begin + row / kRows] |= Rows64{1} << row % kRows;
    }

    // All units were added, and none to the last of up to 65 blocks. From now on that has a bit for
    // each other block where the unit stands.
    void markBlocks();

    // Those of all blocks, one behind the other; valid until the next call but one.
    Rows64 const* rowsOf(unsigned short unit) {
        unsigned const number = numbers_.of(unit);
        if (number >= kMostUnits) [[unlikely]]
            return gather(number);
        return rows_.data() + number * blocks_;
    }

private:
    static constexpr unsigned long kRows = MatchVector<Rows64>::kRows;
    static constexpr unsigned kLikelyUnits = 31;  // different ones
    static constexpr unsigned kMostUnits = 64;    // with a row for each block, and one without any
    static constexpr std::uint32_t kNone = UINT32_MAX;

    // Of a unit in a block.
    struct Other {
        Rows64 rows;
        std::uint32_t block;
        std::uint32_t previous;  // of the same unit
    };

    [[gnu::cold]] void addToOthers(unsigned number, unsigned long row);
    [[gnu::cold]] Rows64 const* gather(unsigned number);

    unsigned long blocks_ = 0;
    UnitNumbers numbers_;
    std::vector<Rows64> rows_;           // by number, and by block
    std::vector<Other> others_;          // of the units from kMostUnits on
    std::vector<std::uint32_t> lastOf_;  // by number from kMostUnits on: in `others_`
    std::vector<Rows64> gathered_;       // for two units
    bool isSecond_ = false;              // the half of them that is next
    bool isMarked_ = false;
};

// One column of the matrix in a block of 64 rows. Before the first unit of the text each row is one
// more edit.
struct BlockColumn {
    std::uint64_t VP = ~std::uint64_t{0};
    std::uint64_t VN = 0;
    std::uint64_t D0 = 0;  // of the step that led here
};

// True when the distance between the pattern (of `rows` units, as many as it may have at most) and
// the text is at most `limit`. Allocates nothing. The work is a few steps for each unit of the
// text, and ends when the answer is certain.
template <class Rows>
bool isWithin(unsigned long limit, MatchVector<Rows> const& pattern, unsigned long rows,
              Pieces text);

// Works on texts of any length, and keeps its memory from one call to the next: at most some 40
// bytes for each unit of the pattern, and 130 for each different one.
class BandedDistance {
public:
    // True when the distance is at most `limit`.
    bool isWithin(unsigned long limit, Pieces first, Pieces second);

    unsigned long between(Utf16View first, Utf16View second);

private:
    // The distance when it is at most `limit`, else a greater number than `limit`. Where only the
    // answer counts, any number on the same side of the limit.
    unsigned long upTo(unsigned long limit, bool isAnswerEnough, Pieces first, Pieces second);
    void fillMatches(Pieces pattern);

    MatchBlocks matches_;
    std::vector<BlockColumn> columns_;  // by block of 64 rows
};

// True when the distance of two texts of any length is at most `limit`. Allocates when both have
// more than 128 units, or those of the shorter one are on many pages of a MatchVector.
bool isWithin(unsigned long limit, Pieces first, Pieces second);

}  // namespace comparer
