// One walk over both sets finds what is left of each. The lengths alone often settle the rest: the
// distance is at least their difference, and at most the longer one.
#include "search/word_sets.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "compare/generalized_levenstein_distance.h"

namespace {

using WordRefs = std::vector<PStringRef<unsigned short> const*>;

WordRefs refsTo(WordSet const& words) {
    WordRefs refs;
    refs.reserve(words.size());
    for (auto const& word : words)
        refs.push_back(&word);
    return refs;
}

unsigned long unitsOf(WordRefs const& words) {
    unsigned long units = 0;
    for (auto const* word : words)
        units += word->length();
    return units;
}

Utf16String joinInTextOrder(WordRefs words) {
    std::sort(words.begin(), words.end(),
              [](auto const* a, auto const* b) { return a->ordinal() < b->ordinal(); });
    Utf16String joined;
    joined.reserve(unitsOf(words));
    for (auto const* word : words)
        joined.append(word->text(), word->length());
    return joined;
}

}  // namespace

Utf16String makeStringForComparison(WordSet const& words) {
    return joinInTextOrder(refsTo(words));
}

bool compareStrings(WordSet const& searchWords, WordSet& candidate, WordSet const& exclusions,
                    unsigned long limit) {
    removeBy(candidate, exclusions);
    WordRefs searchLeft;
    searchLeft.reserve(searchWords.size());
    cancelShared(
        searchWords, candidate, [&](auto const& word) { searchLeft.push_back(&word); },
        [](auto place) { return std::next(place); });

    WordRefs candidateLeft = refsTo(candidate);
    auto const [shorter, longer] = std::minmax({unitsOf(searchLeft), unitsOf(candidateLeft)});
    if (longer - shorter > limit) return false;
    if (longer <= limit) return true;
    return GeneralizedLevensteinDistance(joinInTextOrder(std::move(searchLeft)),
                                         joinInTextOrder(std::move(candidateLeft)), 1, 1,
                                         1) <= limit;
}
