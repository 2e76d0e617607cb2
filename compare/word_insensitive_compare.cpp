// The word-insensitive comparison. The limit comes from the whole lengths less collapsed
// whitespace, the distance from the left-overs alone: the more two texts share, the more the rest
// may differ.
//
// Most comparisons are answered by way of one word list (compare/word_comparison.h). The plain
// path:
//
//   text -> words, in order -> counted in a map -> the two maps cancel -> exclusions go
//        -> what is left, joined in text order -> distance, against the limit
#include <algorithm>
#include <cstring>
#include <iterator>

#include "compare/damerau_levenshtein_distance.h"
#include "compare/generalized_levenstein_distance.h"
#include "compare/limit.h"
#include "compare/text_measures.h"
#include "compare/word_comparison.h"
#include "compare/words.h"

using namespace comparer;

namespace {

// Most texts that differ do so in the first unit.
bool areEqual(Utf16View first, Utf16View second) {
    if (first.size() != second.size()) return false;
    return first.empty() ||
           (first[0] == second[0] &&
            std::memcmp(first.data(), second.data(), first.size() * sizeof first[0]) == 0);
}

}  // namespace

bool DamerauLevenshteinDistance::wordInsansitiveCompareStrings(
    unsigned short const* first, unsigned long firstLength, unsigned short const* second,
    unsigned long secondLength, unsigned long percent, std::vector<Utf16String> const& exclusions) {
    if (areEqual({first, firstLength}, {second, secondLength})) return true;
    TextMeasures const firstMeasures({first, firstLength});
    TextMeasures const secondMeasures({second, secondLength});
    unsigned long const limit = Tolerance(percent).limit(
        std::max(firstMeasures.effectiveLength, secondMeasures.effectiveLength));
    if (std::max(firstMeasures.wordUnits, secondMeasures.wordUnits) <= limit) return true;
    auto const answer = compareByWordList(firstMeasures, secondMeasures, limit, exclusions);
    return answer ? *answer
                  : compareByMaps({first, firstLength}, {second, secondLength}, limit, exclusions);
}

bool DamerauLevenshteinDistance::compareByMaps(Utf16View first, Utf16View second,
                                               unsigned long limit,
                                               std::vector<Utf16String> const& exclusions) {
    std::vector<Utf16String> firstWords;
    std::vector<Utf16String> secondWords;
    spaceSplit(first.data(), first.size(), firstWords);
    spaceSplit(second.data(), second.size(), secondWords);

    WordMap firstMap;
    WordMap secondMap;
    makeUniqueWordMap(firstMap, firstWords);
    makeUniqueWordMap(secondMap, secondWords);
    removeDuplicatesFromMaps(firstMap, secondMap);
    for (Utf16String const& word : exclusions) {
        firstMap.erase(word);
        secondMap.erase(word);
    }

    Utf16String firstLeft;
    Utf16String secondLeft;
    makeAcceptibleString(firstMap, firstWords, firstLeft);
    makeAcceptibleString(secondMap, secondWords, secondLeft);
    return GeneralizedLevensteinDistance(firstLeft, secondLeft, 1, 1, 1) <= limit;
}

unsigned long DamerauLevenshteinDistance::spaceSplit(unsigned short const* text,
                                                     unsigned long length,
                                                     std::vector<Utf16String>& words) {
    TextMeasures const measures({text, length});
    words.reserve(words.size() + measures.words);
    forEachWord(measures.text, [&words](Utf16View word) { words.emplace_back(word); });
    return measures.collapsedWhitespace;
}

bool DamerauLevenshteinDistance::isWhiteSpace(unsigned short unit) {
    return isWhiteSpaceUnit(unit);
}

void DamerauLevenshteinDistance::makeUniqueWordMap(WordMap& map,
                                                   std::vector<Utf16String> const& words) {
    for (Utf16String const& word : words) {
        auto& [count, unmatched] = map[word];
        ++count;
        ++unmatched;
    }
}

void DamerauLevenshteinDistance::removeDuplicatesFromMaps(WordMap& first, WordMap& second) {
    WordMap& walked = first.size() < second.size() ? first : second;
    WordMap& searched = first.size() < second.size() ? second : first;
    for (auto entry = walked.begin(); entry != walked.end();) {
        auto const found = searched.find(entry->first);
        if (found == searched.end()) {
            ++entry;
            continue;
        }
        unsigned long& walkedCount = entry->second.second;
        unsigned long& foundCount = found->second.second;
        unsigned long const shared = std::min(walkedCount, foundCount);
        walkedCount -= shared;
        foundCount -= shared;
        if (foundCount == 0) searched.erase(found);
        entry = walkedCount == 0 ? walked.erase(entry) : std::next(entry);
    }
}

void DamerauLevenshteinDistance::makeAcceptibleString(WordMap& map,
                                                      std::vector<Utf16String> const& words,
                                                      Utf16String& out) {
    for (Utf16String const& word : words) {
        auto const found = map.find(word);
        if (found == map.end()) continue;
        auto& [count, unmatched] = found->second;
        if (unmatched != 0 && unmatched <= count) {
            out += word;
            --unmatched;
        } else {
            --count;
        }
    }
}
