// Sets of words, thinned by one another and judged by what is left of them.
//
// Nothing here looks at which buffer a word lies in: the same units are the same word.
#pragma once

#include <set>

#include "compare/utf16_string.h"
#include "search/pstring_ref.h"

// Takes the words of `others` out of `words`.
template <class Word>
void removeBy(std::set<Word>& words, std::set<Word> const& others) {
    std::erase_if(words, [&others](Word const& word) { return others.contains(word); });
}

// Takes out of both sets the words that they have in common.
template <class Word>
void removeSame(std::set<Word>& first, std::set<Word>& second) {
    if (first.empty() || second.empty()) return;
    if (*first.rbegin() < *second.begin() || *second.rbegin() < *first.begin()) return;
    auto a = first.begin();
    auto b = second.begin();
    while (a != first.end() && b != second.end()) {
        if (*a < *b) {
            ++a;
        } else if (*b < *a) {
            ++b;
        } else {
            a = first.erase(a);
            b = second.erase(b);
        }
    }
}

// The words in text order, with nothing between them. No two of them have the same ordinal.
Utf16String makeStringForComparison(WordSet const& words);

// True when what is left of the two sides, once the words of `exclusions` are gone from the
// candidate and shared words from both, is within `limit` edits. `searchWords` must be rid of the
// exclusions already. The candidate is cut to its left-over words.
bool compareStrings(WordSet const& searchWords, WordSet& candidate, WordSet const& exclusions,
                    unsigned long limit);
