// The edit distance of two strings at any costs, in a single row as long as the shorter string:
// what runs when the costs differ, and the reference for the kernel that runs when they do not. The
// costs are those of generalized_levenstein_distance.h.
#pragma once

#include <algorithm>
#include <utility>
#include <vector>

namespace comparer {

template <class String>
typename String::size_type weightedDistance(String const& first, String const& second,
                                            typename String::size_type insertCost,
                                            typename String::size_type deleteCost,
                                            typename String::size_type replaceCost) {
    using Size = typename String::size_type;
    // The transpose of the matrix has the same value, and the row stays as short as the shorter.
    if (second.size() < first.size()) {
        return weightedDistance(second, first, deleteCost, insertCost, replaceCost);
    }
    std::vector<Size> row(first.size() + 1);
    for (Size i = 1; i <= first.size(); ++i)
        row[i] = row[i - 1] + deleteCost;
    for (auto const unit : second) {
        Size diagonal = row[0];
        row[0] += insertCost;
        for (Size i = 1; i <= first.size(); ++i) {
            Size const above = row[i];
            if (first[i - 1] == unit) {
                row[i] = diagonal;
            } else {
                row[i] =
                    std::min({row[i - 1] + deleteCost, above + insertCost, diagonal + replaceCost});
            }
            diagonal = above;
        }
    }
    return row[first.size()];
}

}  // namespace comparer
