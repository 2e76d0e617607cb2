#include "near_text/matching/match.h"

#include <algorithm>

namespace near_text {

void sortByNearness(std::vector<Match>& matches) {
    std::stable_sort(matches.begin(), matches.end(),
                     [](Match const& a, Match const& b) { return a.percent > b.percent; });
}

Indices indicesOf(std::vector<Match> const& matches) {
    Indices indices;
    indices.reserve(matches.size());
    for (Match const& match : matches)
        indices.push_back(match.index);
    return indices;
}

void keepWanted(std::vector<Match>& matches, Wanted wanted) {
    sortByNearness(matches);
    if (matches.size() > wanted.most) matches.resize(wanted.most);
    if (!wanted.isBestAlone || matches.empty()) return;
    int const best = matches[0].percent;
    std::erase_if(matches, [&](Match const& match) { return match.percent < best; });
}

}  // namespace near_text
