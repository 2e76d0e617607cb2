// Both methods by way of sets and maps alone: the operations that answer what the fast road's word
// list cannot hold, called for everything.
#pragma once

#include "bench/contenders.h"

namespace bench {

// The indices of the matches.
Answer plainSearch(SearchArguments const& arguments);

// For each pair, 1 if it is alike, else 0.
Answer plainCompare(Pairs const& pairs, int percent);

}  // namespace bench
