// The word-insensitive comparison:
//
//   text -> words, in order -> counted in a map -> the two maps cancel -> exclusions go
//        -> what is left, joined in text order -> distance, against the limit
//
// The limit comes from the whole lengths less surplus whitespace, the distance from the left-overs
// alone: the more two texts share, the more the rest may differ. Lengths and units alone settle
// many pairs before a word is copied.
#include <algorithm>
#include <iterator>
#include <optional>

#include "compare/damerau_levenshtein_distance.h"
#include "compare/few_words.h"
#include "compare/generalized_levenstein_distance.h"
#include "compare/limit.h"
#include "compare/text_shape.h"
#include "compare/unit_balance.h"
#include "compare/words.h"

namespace {

// True when the left-overs of the two texts must be further apart than `limit`. Words cancel one
// for one here, so without exclusions both sides keep what they have beyond the other.
bool isTooFar(TextShape const& first, TextShape const& second, unsigned long limit) {
    auto const [fewer, more] = std::minmax(first.wordUnits, second.wordUnits);
    if (more - fewer > limit) return true;
    if (first.wordUnits > UnitBalance::kMostUnits) return false;
    UnitBalance balance;
    forEachWord(first.text, first.units,
                [&](auto const* word, unsigned long length) { balance.add(word, length); });
    unsigned long const missing = balance.missingIn(second.text, second.units);
    return missing > limit || second.wordUnits + missing > first.wordUnits + limit;
}

// The answer for short texts, unless a word that both hold comes more than once: which of its
// occurrences cancel is for the maps to tell.
std::optional<bool> compareFewWords(TextShape const& firstShape, TextShape const& secondShape,
                                    unsigned long limit) {
    if (std::max(firstShape.words, secondShape.words) > FewWords::kMost) return {};
    FewWords first(firstShape);
    FewWords second(secondShape);
    FewWords::cancelSingles(first, second);
    if (std::max(first.units(), second.units()) <= limit) return true;
    if (first.sharesWordWith(second)) return {};
    return GeneralizedLevensteinDistance(first.joined(), second.joined(), 1, 1, 1) <= limit;
}

}  // namespace

bool DamerauLevenshteinDistance::wordInsansitiveCompareStrings(
    unsigned short const* first, unsigned long firstLength, unsigned short const* second,
    unsigned long secondLength, unsigned long percent, std::vector<Utf16String> const& exclusions) {
    TextShape const firstShape(first, firstLength);
    TextShape const secondShape(second, secondLength);
    unsigned long const limit = distanceLimit(
        percent, std::max(firstShape.effectiveLength(), secondShape.effectiveLength()));
    if (std::max(firstShape.wordUnits, secondShape.wordUnits) <= limit) return true;
    if (exclusions.empty()) {
        if (isTooFar(firstShape, secondShape, limit)) return false;
        if (auto const isAlike = compareFewWords(firstShape, secondShape, limit)) return *isAlike;
    }

    std::vector<Utf16String> firstWords;
    std::vector<Utf16String> secondWords;
    spaceSplit(first, firstLength, firstWords);
    spaceSplit(second, secondLength, secondWords);

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
    TextShape const shape(text, length);
    words.reserve(words.size() + shape.words);
    forEachWord(text, shape.units, [&words](auto const* word, unsigned long wordLength) {
        words.emplace_back(word, wordLength);
    });
    return shape.surplus;
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
