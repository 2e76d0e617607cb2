// A match of a text, and which of a text's matches are wanted.
#pragma once

#include <vector>

#include "near_text/matching/difference.h"
#include "near_text/matching/search_terms.h"

namespace near_text {

struct Match {
    unsigned long index;  // the add-in's, in the whole list
    // The highest percentage, for short and long entries alike, at which the add-in still finds it.
    int percent;
    unsigned long distance;
    unsigned long limit;         // at the percentage that was asked for
    bool isAccepted = false;     // by somebody
    Difference difference = {};  // of text and entry, where that is asked for
};

// Nearest first; those equally near in the order of the list.
void sortByNearness(std::vector<Match>& matches);

Indices indicesOf(std::vector<Match> const& matches);

void keepWanted(std::vector<Match>& matches, Wanted wanted);

}  // namespace near_text
