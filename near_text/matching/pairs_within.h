// Pairs within one list. Which of two is the text decides on their lengths, so it may be that only
// one finds the other. A pair stands once: under the earlier entry if that finds the later, else
// under the later. For that the add-in is asked again about the earlier ones that were found, and
// nothing need be remembered, however many pairs there are.
#pragma once

#include "near_text/matching/matches.h"

namespace near_text {

// Those of `found`, what the entry at `index` finds, whose pair stands under it.
Indices pairsUnder(Matcher& matcher, Percentages percentages, unsigned long index, Indices found);

}  // namespace near_text
