// One column of the matrix from the one before, and what its last diagonal tells. How the cells are
// put into bits stands in compare/bit_parallel_distance.cpp.
#pragma once

#include <algorithm>
#include <cassert>
#include <cstdint>

namespace comparer {

// The differences along the row above a block or along its last row, of one column.
struct Carry {
    std::uint64_t notHP;  // 0 or 1
    std::uint64_t HN;
};

// Above the first row every unit of the text is one more edit.
inline constexpr Carry kTopRow{0, 0};

// Goes on by one unit, which stands in the rows of `Eq`, and gives D0. `carry` is that of the row
// above, and becomes that of `lastRow`.
template <class Rows>
Rows step(Rows& VP, Rows& VN, Rows Eq, Carry& carry, unsigned lastRow = 8 * sizeof(Rows) - 1) {
    bool const isFull = lastRow == 8 * sizeof(Rows) - 1;
    // HN goes down the rows as the carry of this sum, from one block into the next as well: what
    // the next one waits for is ready first.
    Rows const inBlock = (Eq & VP) + VP;
    Rows const sum = inBlock + carry.HN;
    Rows const D0 = (sum ^ VP) | Eq | VN;
    // The steps along the rows. HP is VN | ~(D0 | VP): its complement, put so, is ready sooner.
    Rows notHP = (sum | VP | Eq) & ~VN;
    Rows HN = D0 & VP;
    Carry const below{static_cast<std::uint64_t>(notHP >> lastRow) & 1U,
                      isFull ? static_cast<std::uint64_t>(inBlock < VP) | (sum < inBlock ? 1U : 0U)
                             : static_cast<std::uint64_t>(HN >> lastRow) & 1U};
    // Moved down by a row, they give the steps down the new column.
    notHP = notHP << 1 | carry.notHP;
    HN = HN << 1 | carry.HN;
    VP = HN | (~D0 & notHP);
    VN = D0 & ~notHP;
    carry = below;
    return D0;
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

}  // namespace comparer
