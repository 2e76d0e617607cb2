// The edit distance of two strings.
//
// `insertCost` prices a unit of `second` without a partner in `first`, `deleteCost` a unit of
// `first` without a partner in `second`, `replaceCost` two differing units set against each other.
// Two neighbours that changed places are two edits.
#pragma once

#include "compare/bit_parallel_distance.h"
#include "compare/weighted_distance.h"

template <class String>
typename String::size_type GeneralizedLevensteinDistance(String const& first, String const& second,
                                                         typename String::size_type insertCost,
                                                         typename String::size_type deleteCost,
                                                         typename String::size_type replaceCost) {
    if (insertCost == 1 && deleteCost == 1 && replaceCost == 1) {
        return comparer::BandedDistance().between(first, second);
    }
    return comparer::weightedDistance(first, second, insertCost, deleteCost, replaceCost);
}
