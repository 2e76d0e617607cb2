// Both methods by way of sets and maps alone: the forms that the fast paths are held against.
#pragma once

#include "bench/subjects.h"

namespace bench {

// The indices of the matches.
Answer plainSearch(SearchArguments const& arguments);

// For each pair, 1 if it is alike, else 0.
Answer plainCompare(Pairs const& pairs, int percent);

}  // namespace bench
