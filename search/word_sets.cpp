#include "search/word_sets.h"

#include <algorithm>
#include <vector>

#include "compare/generalized_levenstein_distance.h"

Utf16String makeStringForComparison(WordSet const& words) {
    std::vector<PStringRef<unsigned short> const*> inTextOrder;
    inTextOrder.reserve(words.size());
    for (auto const& word : words)
        inTextOrder.push_back(&word);
    std::sort(inTextOrder.begin(), inTextOrder.end(),
              [](auto const* a, auto const* b) { return a->ordinal() < b->ordinal(); });
    Utf16String joined;
    for (auto const* word : inTextOrder)
        joined.append(word->text(), word->length());
    return joined;
}

bool compareStrings(WordSet const& searchWords, WordSet& candidate, WordSet const& exclusions,
                    unsigned long limit) {
    removeBy(candidate, exclusions);
    WordSet searchLeft = searchWords;
    removeSame(searchLeft, candidate);
    Utf16String const left = makeStringForComparison(searchLeft);
    Utf16String const right = makeStringForComparison(candidate);
    unsigned long const longer = std::max(left.size(), right.size());
    // The distance is at least the difference of the lengths.
    if (longer - std::min(left.size(), right.size()) > limit) return false;
    return GeneralizedLevensteinDistance(left, right, 1, 1, 1) <= limit;
}
