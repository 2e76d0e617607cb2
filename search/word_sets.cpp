#include "search/word_sets.h"

#include <map>

#include "compare/generalized_levenstein_distance.h"

Utf16String makeStringForComparison(WordSet const& words) {
    std::map<int, PStringRef<unsigned short>> byOrdinal;
    for (auto const& word : words)
        byOrdinal[word.ordinal()] = word;
    Utf16String joined;
    for (auto const& [ordinal, word] : byOrdinal)
        joined.append(word.text(), word.length());
    return joined;
}

bool compareStrings(WordSet const& searchWords, WordSet& candidate, WordSet const& exclusions,
                    unsigned long limit) {
    removeBy(candidate, exclusions);
    WordSet searchLeft = searchWords;
    removeSame(searchLeft, candidate);
    Utf16String const left = makeStringForComparison(searchLeft);
    Utf16String const right = makeStringForComparison(candidate);
    unsigned long const difference =
        left.size() > right.size() ? left.size() - right.size() : right.size() - left.size();
    if (difference > limit) return false;
    return GeneralizedLevensteinDistance(left, right, 1, 1, 1) <= limit;
}
