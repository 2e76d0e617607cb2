// What a text finds in a list: the matches that the add-in gives, how near each is, and which of
// them are wanted.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "near_text/matching/entry_search.h"
#include "near_text/matching/search_terms.h"
#include "reference/explanation.h"

namespace near_text {

struct Match {
    unsigned long index;  // the add-in's, in the whole list
    // The highest percentage, for short and long entries alike, at which the add-in still finds it.
    int percent;
    unsigned long distance;
    unsigned long limit;  // at the percentage that was asked for
};

// Nearest first; those equally near in the order of the list.
void sortByNearness(std::vector<Match>& matches);

void keepWanted(std::vector<Match>& matches, Wanted wanted);

// One object for a thread. What it is given is the caller's and outlives it.
class Matcher {
public:
    Matcher(host_client::Component& component, EntryList const& searchedList,
            SearchTerms const& searchTerms, Wanted wantedMatches, Shortlist* shortlist = nullptr);

    // All matches in the order of the list; where only some are wanted, these, nearest first.
    // Throws Refused.
    std::vector<Match> matches(std::u16string_view text);

    // How near the entries at `indices` are, in their order; each is a match of `text`. Throws
    // std::runtime_error where the plain computation says that one is none.
    std::vector<Match> measured(std::u16string_view text, Indices const& indices) const;

    // As Match::percent, of the entry at `index`, match or not. The text holds a word.
    int nearnessOf(std::u16string_view text, unsigned long index) const;

    EntrySearch search;

private:
    reference::SearchExplanation explanation(std::u16string_view text) const;
    reference::Measure measure(reference::SearchExplanation const& against,
                               unsigned long index) const;
    Indices found(std::u16string_view text);

    EntryList const& list;
    SearchTerms const& terms;
    Wanted wanted;
    reference::ExcludedWords excluded;
};

}  // namespace near_text
