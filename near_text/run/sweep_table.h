// What a sweep counted, as a table with a row for each percentage, the highest first.
//
// Where pairs are known, there is one for all matches, below it one for the best alone, and one for
// the mutual ones, and each says how good they are: precision is the share of the matches that are
// known pairs, recall the share of the known pairs that are found, and F1 their harmonic mean. The
// highest F1 of each is marked, wherever it stands. Where nothing is found there is
// no precision, and the other two are 0.
#pragma once

#include <vector>

#include "near_text/output/format.h"
#include "near_text/run/sweep.h"

namespace near_text {

// Of the percentages, by step. `isWithin` where one list was searched in itself.
Table sweepTable(std::vector<int> const& percents, SweepCounts const& counts,
                 KnownPairs const& pairs, bool isWithin, bool hasAllColumns);

}  // namespace near_text
