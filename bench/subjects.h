// What is timed: the built library, an older one, the plain path, and scorers of the field.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "bench/race.h"
#include "host_client/component.h"

namespace bench {

using host_client::SearchArguments;

// Whole calls through a host's entry, `ours` of the built library and `baseline` of the one that
// the environment's NEAR_TEXT_BASELINE names, if it does; and `plain`. The texts behind `arguments`
// outlive the case.
Case searchCase(SearchArguments const& arguments);

// A call with the first arguments, `ours`, against one with the second, `ordinary`, both of the
// built library: how much slower a list is that was made to be slow than one of its size.
Case attackCase(SearchArguments const& attack, SearchArguments const& ordinary);

// One run compares all pairs.
using Pairs = std::vector<std::pair<std::u16string, std::u16string>>;
Case compareCase(Pairs const& pairs, int percent);
Case attackCase(Pairs const& attack, Pairs const& ordinary, int percent);

// Makes a component and destroys it.
Case componentCase();

// Adds scorers of RapidFuzz, if it was there when this was built. They get the entries cut, count
// those that reach the percentage (the distance: those within our limit), and so do an easier job.
void addScorers(Case& one, SearchArguments const& arguments);

}  // namespace bench
