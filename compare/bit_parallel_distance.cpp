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

unsigned long unitsOf(Pieces pieces) {
    unsigned long units = 0;
    for (Utf16View const piece : pieces)
        units += piece.size();
    return units;
}

namespace {

constexpr unsigned long kBlockRows = MatchVector<Rows64>::kRows;

// The differences along the row above a block or along its last row, of one column.
struct Carry {
    std::uint64_t HP;  // 0 or 1
    std::uint64_t HN;
};

// Above the first row every unit of the text is one more edit.
constexpr Carry kTopRow{1, 0};

// Goes on by one unit, which stands in the rows of `Eq`, and gives D0. `carry` is that of the row
// above, and becomes that of the last row.
template <class Rows>
Rows step(Rows& VP, Rows& VN, Rows Eq, Carry& carry) {
    constexpr unsigned kLastRow = 8 * sizeof(Rows) - 1;
    // Where a cell is its upper left neighbour's.
    Rows const X = Eq | carry.HN;
    Rows const D0 = (((X & VP) + VP) ^ VP) | X | VN;
    // The steps along the rows.
    Rows HP = VN | ~(D0 | VP);
    Rows HN = D0 & VP;
    Carry const below{static_cast<std::uint64_t>(HP >> kLastRow),
                      static_cast<std::uint64_t>(HN >> kLastRow)};
    // Moved down by a row, they give the steps down the new column.
    HP = HP << 1 | carry.HP;
    HN = HN << 1 | carry.HN;
    VP = HN | ~(D0 | HP);
    VN = D0 & HP;
    carry = below;
    return D0;
}

template <class Rows>
Rows step(Rows& VP, Rows& VN, Rows Eq) {
    Carry carry = kTopRow;
    return step(VP, VN, Eq, carry);
}

// How many more edits the limit allows at the cell on the last diagonal, column by column.
class LastDiagonal {
public:
    // The difference of `rows` and `columns` is at most `limit`.
    LastDiagonal(unsigned long limit, unsigned long rows, unsigned long columns)
        : row_(static_cast<long>(rows) - static_cast<long>(columns) - 1),
          rowsLeft_(std::min(rows, columns)),
          spare_(static_cast<long>(limit - (std::max(rows, columns) - std::min(rows, columns)))) {
        assert(spare_ >= 0);
    }

    // Goes on to the next column, and to the next row. False while there is no row.
    bool next() { return ++row_ >= 0; }

    unsigned long row() const { return static_cast<unsigned long>(row_); }  // from 0
    // `D0` begins with the bit of the row.
    void step(std::uint64_t D0) {
        spare_ -= static_cast<long>(~D0 & 1U);
        --rowsLeft_;
    }

    bool isAbove() const { return spare_ < 0; }
    // True when the end is above the limit or cannot be: a spare below 0 is a very large number.
    bool isSettled() const { return static_cast<unsigned long>(spare_) >= rowsLeft_; }
    long spare() const { return spare_; }

private:
    long row_;
    unsigned long rowsLeft_;
    long spare_;
};

}  // namespace

template <class Rows>
bool isWithin(unsigned long limit, MatchVector<Rows> const& pattern, unsigned long rows,
              Pieces text) {
    assert(rows <= MatchVector<Rows>::kRows);
    unsigned long const columns = unitsOf(text);
    if (std::max(rows, columns) <= limit) return true;
    if (std::max(rows, columns) - std::min(rows, columns) > limit) return false;
    LastDiagonal diagonal(limit, rows, columns);
    Rows VP = ~Rows{0};
    Rows VN = 0;
    for (Utf16View const piece : text) {
        for (unsigned short const unit : piece) {
            Rows const D0 = step(VP, VN, pattern.rowsOf(unit));
            if (!diagonal.next()) continue;
            diagonal.step(static_cast<unsigned long>(D0 >> diagonal.row()));
            if (diagonal.isSettled()) return !diagonal.isAbove();
        }
    }
    return true;  // one of the two is empty
}

template bool isWithin(unsigned long, MatchVector<Rows64> const&, unsigned long, Pieces);
template bool isWithin(unsigned long, MatchVector<Rows128> const&, unsigned long, Pieces);

void BandedDistance::fillMatches(Pieces pattern, unsigned long rows) {
    unsigned long const blocks = (rows + kBlockRows - 1) / kBlockRows;
    if (matches_.size() < blocks) {
        // No more than needed, and not beside the old ones.
        std::vector<MatchVector<Rows64>>().swap(matches_);
        matches_.resize(blocks);
    }
    for (unsigned long block = 0; block < blocks; ++block)
        matches_[block].clear();
    unsigned long row = 0;
    for (Utf16View const piece : pattern) {
        for (unsigned short const unit : piece) {
            matches_[row / kBlockRows].add(unit, row % kBlockRows);
            ++row;
        }
    }
}

unsigned long BandedDistance::upTo(unsigned long limit, bool isAnswerEnough, Pieces first,
                                   Pieces second) {
    unsigned long rows = unitsOf(first);
    unsigned long columns = unitsOf(second);
    if (columns < rows) return upTo(limit, isAnswerEnough, second, first);
    unsigned long const difference = columns - rows;
    if (difference > limit || rows == 0) return difference;
    if (isAnswerEnough && columns <= limit) return columns;
    LastDiagonal diagonal(limit, rows, columns);
    fillMatches(first, rows);

    // The band: so many diagonals below the first one and above the last. A way that leaves it
    // needs more edits than the limit only to come back.
    unsigned long const spare = (limit - difference) / 2;
    unsigned long const lead = difference + spare;  // of columns over rows
    columns_.assign((rows - 1) / kBlockRows + 1, BlockColumn());
    unsigned long column = 0;
    for (Utf16View const piece : second) {
        for (unsigned short const unit : piece) {
            unsigned long const top = column > lead ? column - lead : 0;
            unsigned long const bottom = std::min(column + spare, rows - 1);
            unsigned long const last = bottom / kBlockRows;
            bool const isOnDiagonal = diagonal.next();
            Carry carry = kTopRow;
            for (unsigned long block = top / kBlockRows; block <= last; ++block) {
                auto& [VP, VN] = columns_[block];
                Rows64 const D0 = step(VP, VN, matches_[block].rowsOf(unit), carry);
                if (isOnDiagonal && block == diagonal.row() / kBlockRows) {
                    diagonal.step(D0 >> diagonal.row() % kBlockRows);
                }
            }
            ++column;
            if (diagonal.isAbove()) return limit + 1;
            if (isAnswerEnough && diagonal.isSettled()) return limit;
        }
    }
    return limit - static_cast<unsigned long>(diagonal.spare());
}

bool BandedDistance::isWithin(unsigned long limit, Pieces first, Pieces second) {
    return upTo(limit, true, first, second) <= limit;
}

unsigned long BandedDistance::between(Utf16View first, Utf16View second) {
    Utf16View const firstPieces[] = {first};
    Utf16View const secondPieces[] = {second};
    // Near texts are done within a narrow band.
    unsigned long limit = kBlockRows;
    while (true) {
        unsigned long const distance = upTo(limit, false, firstPieces, secondPieces);
        if (distance <= limit) return distance;
        limit *= 4;
    }
}

bool isWithin(unsigned long limit, Pieces first, Pieces second) {
    unsigned long const rows = unitsOf(first);
    unsigned long const columns = unitsOf(second);
    if (columns < rows) return isWithin(limit, second, first);
    if (columns <= limit) return true;
    if (columns - rows > limit) return false;
    if (rows > kBlockRows) return BandedDistance().isWithin(limit, first, second);
    MatchVector<Rows64> pattern(rows);
    unsigned long row = 0;
    for (Utf16View const piece : first) {
        for (unsigned short const unit : piece)
            pattern.add(unit, row++);
    }
    return isWithin(limit, pattern, rows, second);
}
