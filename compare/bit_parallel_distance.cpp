// Myers, "A fast bit-vector algorithm for approximate string matching based on dynamic
// programming", Journal of the ACM 46(3), 1999, in the form of Hyyrö, "A bit-vector algorithm for
// computing Levenshtein and Damerau edit distances", Nordic Journal of Computing 10, 2003.
//
// The matrix has a row for each unit of the pattern and a column for each unit of the text; cell
// [i][j] is the distance of their first i and j units. Neighbouring cells differ by -1, 0 or 1, so
// a column is two bits a row, and a machine word holds a block of 64 rows:
//
//   VP  the cell is one more than the one above it          (vertical positive)
//   VN  the cell is one less than the one above it          (vertical negative)
//   D0  the cell is the same as the one up and to the left  (diagonal zero)
//   HP  the cell is one more than the one to its left       (horizontal positive)
//   HN  the cell is one less than the one to its left       (horizontal negative)
//   Eq  the unit of the row is the unit of the text
//
// Only what can be within the limit is worked out (Ukkonen, "Algorithms for approximate string
// matching", Information and Control 64, 1985):
//
//   columns ->        Along a diagonal cells never fall, and rise by at most 1 a step. The last
//   \ . \ .           diagonal ends in the distance: above the limit it is settled, and so it is
//   . \ . \           when the rows left cannot take it above.
//   \ . \ .
//   . \ . *           A way of at most `limit` edits keeps to a band along that diagonal, and only
//                     blocks within the band take part. Cells outside are taken to be as high as
//                     they can be.
#include "compare/bit_parallel_distance.h"

#include <algorithm>
#include <cassert>
#include <utility>

#include "compare/bit_parallel_step.h"
#include "compare/each_unit.h"
#include "compare/unit_lanes.h"

namespace comparer {

namespace {

constexpr unsigned long kBlockRows = MatchVector<Rows64>::kRows;

template <class Rows>
Rows step(Rows& VP, Rows& VN, Rows Eq) {
    Carry carry = kTopRow;
    return step(VP, VN, Eq, carry);
}

// Goes on by one unit in these blocks, from the upper to the lower. `rows` are those of the unit. A
// function of its own, so that its loop has all registers.
[[gnu::noinline]] void stepBlocks(std::span<BlockColumn> blocks, Rows64 const* rows) {
    Carry carry = kTopRow;
    for (BlockColumn& block : blocks)
        block.D0 = step(block.VP, block.VN, *rows++, carry);
}

constexpr unsigned long kGroupRows = 2 * kUnitLanes;

// Gives the rows of a unit by holding it against all of them. Nothing is prepared, so it is quicker
// than a MatchVector for a short pattern that is used once.
template <unsigned kGroups>
class PatternUnits {
public:
    explicit PatternUnits(Pieces const& pattern) {
        unsigned short* out = units_.data();
        for (Utf16View const piece : pattern.pieces)
            out = std::copy(piece.begin(), piece.end(), out);
    }

    // Rows above the pattern's may be set too: no row is worked out from one above it.
    Rows64 rowsOf(unsigned short unit) const {
        UnitLanes const same = UnitLanes::filledWith(unit);
        Rows64 rows = 0;
        for (unsigned group = 0; group < kGroups; ++group) {
            unsigned short const* const units = units_.data() + group * kGroupRows;
            rows |= Rows64{bitsOf(UnitLanes::load(units) == same,
                                  UnitLanes::load(units + kUnitLanes) == same)}
                    << group * kGroupRows;
        }
        return rows;
    }

private:
    std::array<unsigned short, kGroups * kGroupRows> units_{};
};

// `pattern` gives the rows of a unit.
template <class Rows, class Pattern>
bool isPatternWithin(unsigned long limit, Pattern const& pattern, unsigned long rows,
                     Pieces const& text) {
    unsigned long const columns = text.units;
    if (auto const answer = isWithinByLengths(limit, rows, columns)) return *answer;
    LastDiagonal diagonal(limit, rows, columns);
    Rows VP = ~Rows{0};
    Rows VN = 0;
    forEachUnitWhile(text, [&](unsigned short unit) {
        Rows const D0 = step(VP, VN, pattern.rowsOf(unit));
        if (!diagonal.next()) return true;
        diagonal.step(static_cast<unsigned long>(D0 >> diagonal.row()));
        return !diagonal.isSettled();
    });
    return !diagonal.isAbove();
}

}  // namespace

template <class Rows>
bool isWithin(unsigned long limit, MatchVector<Rows> const& pattern, unsigned long rows,
              Pieces text) {
    assert(rows <= MatchVector<Rows>::kRows);
    return isPatternWithin<Rows>(limit, pattern, rows, text);
}

template bool isWithin(unsigned long, MatchVector<Rows64> const&, unsigned long, Pieces);
template bool isWithin(unsigned long, MatchVector<Rows128> const&, unsigned long, Pieces);

void MatchBlocks::addToOthers(unsigned number, unsigned long row) {
    if (number - kMostUnits == lastOf_.size()) lastOf_.push_back(kNone);
    std::uint32_t& last = lastOf_[number - kMostUnits];
    // Blocks are filled one after the other.
    if (last == kNone || others_[last].block != row / kRows) {
        others_.push_back({0, static_cast<std::uint32_t>(row / kRows), last});
        last = static_cast<std::uint32_t>(others_.size() - 1);
    }
    others_[last].rows |= Rows64{1} << row % kRows;
}

void MatchBlocks::markBlocks() {
    isMarked_ = true;
    unsigned long const last = blocks_ - 1;
    for (unsigned long begin = 0; begin < rows_.size(); begin += blocks_) {
        for (unsigned long block = 0; block < last; ++block)
            rows_[begin + last] |= Rows64{rows_[begin + block] != 0 ? 1U : 0U} << block;
    }
}

Rows64 const* MatchBlocks::gather(unsigned number) {
    gathered_.resize(2 * blocks_);
    isSecond_ = !isSecond_;
    Rows64* const rows = gathered_.data() + (isSecond_ ? blocks_ : 0);
    std::fill_n(rows, blocks_, 0);
    for (std::uint32_t at = lastOf_[number - kMostUnits]; at != kNone; at = others_[at].previous) {
        rows[others_[at].block] = others_[at].rows;
        if (isMarked_) rows[blocks_ - 1] |= Rows64{1} << others_[at].block;
    }
    return rows;
}

void BandedDistance::fillMatches(Pieces pattern) {
    matches_.clear(pattern.units);
    unsigned long row = 0;
    forEachUnitWhile(pattern, [&](unsigned short unit) {
        matches_.add(unit, row++);
        return true;
    });
}

unsigned long BandedDistance::upTo(unsigned long limit, bool isAnswerEnough, Pieces first,
                                   Pieces second) {
    unsigned long const rows = first.units;
    unsigned long const columns = second.units;
    if (columns < rows) return upTo(limit, isAnswerEnough, second, first);
    if (columns - rows > limit || rows == 0) return columns - rows;
    if (isAnswerEnough && columns <= limit) return columns;
    LastDiagonal diagonal(limit, rows, columns);
    fillMatches(first);
    // The band: so many diagonals below the first one and above the last. A way that leaves it
    // needs more edits than the limit only to come back.
    unsigned long const lag = (limit - (columns - rows)) / 2;
    unsigned long const lead = columns - rows + lag;  // of columns over rows
    unsigned long const lastRow = rows - 1;
    columns_.assign(lastRow / kBlockRows + 1, BlockColumn());
    unsigned long column = 0;
    auto const goOn = [&](Rows64 const* rowsOfUnit) {
        unsigned long const top = (column > lead ? column - lead : 0) / kBlockRows;
        unsigned long const bottom = std::min(column + lag, lastRow) / kBlockRows;
        if (top == bottom) {  // as in most columns of a narrow band
            auto& [VP, VN, D0] = columns_[top];
            D0 = step(VP, VN, rowsOfUnit[top]);
        } else {
            stepBlocks({&columns_[top], &columns_[bottom] + 1}, rowsOfUnit + top);
        }
        if (diagonal.next()) {
            unsigned long const row = diagonal.row();
            diagonal.step(columns_[row / kBlockRows].D0 >> row % kBlockRows);
        }
        ++column;
        return !diagonal.isAbove() && !(isAnswerEnough && diagonal.isSettled());
    };
    // The next unit's rows are looked for a column ahead, since finding them takes a while.
    Rows64 const* next = nullptr;
    bool const isUnsettled = forEachUnitWhile(second, [&](unsigned short unit) {
        Rows64 const* const rowsOfUnit = std::exchange(next, matches_.rowsOf(unit));
        return rowsOfUnit == nullptr || goOn(rowsOfUnit);
    });
    if (isUnsettled && next != nullptr) goOn(next);
    if (diagonal.isAbove()) return limit + 1;
    return limit - static_cast<unsigned long>(diagonal.spare());
}

bool BandedDistance::isWithin(unsigned long limit, Pieces first, Pieces second) {
    return upTo(limit, true, first, second) <= limit;
}

unsigned long BandedDistance::between(Utf16View first, Utf16View second) {
    // Near texts are done within a narrow band.
    unsigned long limit = kBlockRows;
    while (true) {
        unsigned long const distance = upTo(limit, false, Pieces(first), Pieces(second));
        if (distance <= limit) return distance;
        limit *= 4;
    }
}

namespace {

// A function of its own, so that its loop has all registers.
template <class Rows>
[[gnu::noinline]] bool isWithinMatched(unsigned long limit, Pieces const& pattern,
                                       Pieces const& text) {
    MatchVector<Rows> match;
    unsigned long row = 0;
    forEachUnitWhile(pattern, [&](unsigned short unit) {
        match.add(unit, row++);
        return true;
    });
    return isWithin(limit, match, pattern.units, text);
}

}  // namespace

bool isWithin(unsigned long limit, Pieces first, Pieces second) {
    unsigned long const rows = first.units;
    unsigned long const columns = second.units;
    if (columns < rows) return isWithin(limit, second, first);
    if (auto const answer = isWithinByLengths(limit, rows, columns)) return *answer;
    if (rows > MatchVector<Rows128>::kRows) return BandedDistance().isWithin(limit, first, second);
    if (rows > kBlockRows) return isWithinMatched<Rows128>(limit, first, second);
    unsigned long const groups = (rows + kGroupRows - 1) / kGroupRows;
    // As many instructions as either takes, about.
    if (groups * columns <= 4 * rows + columns) {
        switch (groups) {
            case 0:
            case 1:
                return isPatternWithin<Rows64>(limit, PatternUnits<1>(first), rows, second);
            case 2:
                return isPatternWithin<Rows64>(limit, PatternUnits<2>(first), rows, second);
            case 3:
                return isPatternWithin<Rows64>(limit, PatternUnits<3>(first), rows, second);
            default:
                return isPatternWithin<Rows64>(limit, PatternUnits<4>(first), rows, second);
        }
    }
    return isWithinMatched<Rows64>(limit, first, second);
}

}  // namespace comparer
