// What a text finds in a list: the matches that the add-in gives, and how near each is.
#pragma once

#include <cstddef>
#include <functional>
#include <string_view>
#include <vector>

#include "near_text/matching/entry_search.h"
#include "near_text/matching/match.h"
#include "near_text/matching/search_terms.h"
#include "reference/explanation.h"

namespace near_text {

// One object for a thread. What it is given is the caller's and outlives it; threads may share all
// but the component. `excludedWords` are those of the terms, as the list's separator cuts them.
class Matcher {
public:
    Matcher(host_client::Component& component, EntryList const& searchedList,
            SearchTerms const& searchTerms, reference::ExcludedWords const& excludedWords,
            Wanted wantedMatches, Shortlist* shortlist = nullptr);

    // All matches in the order of the list; where only some are wanted, these, nearest first. Those
    // that the terms leave out, or that `isRejected`, are none. Throws Refused.
    using IsRejected = std::function<bool(unsigned long index)>;
    std::vector<Match> matches(std::u16string_view text, IsRejected const& isRejected = {});

    // How near the entries at `indices` are, in their order; each is a match of `text`. Throws
    // std::runtime_error where the plain computation says that one is none.
    std::vector<Match> measured(std::u16string_view text, Indices const& indices) const;

    // Fills in how the matches of a text differ from it. `text` is as it is printed, `units` as
    // they are compared.
    void markDifferences(std::vector<Match>& matches, std::string const& text,
                         std::u16string_view units, Preparer const& preparer) const;

    // As Match::percent, of the entry at `index`, match or not. The text holds a word.
    int nearnessOf(std::u16string_view text, unsigned long index) const;

    // Whether the entry at `text`, taken as a text, finds the one at `entry`. None does that is
    // refused.
    bool finds(Percentages percentages, unsigned long text, unsigned long entry);

    // Takes those out, of what `text` finds, that the terms leave out, and counts them unless that
    // has been done.
    void leaveOut(std::u16string_view text, Indices& found, bool isCounted = true);

    // How many matches were left out so far. Where only the nearest are wanted the others may not
    // have been looked at.
    std::size_t leftOut() const { return leftOut_; }

    EntrySearch search;

private:
    reference::SearchExplanation explanation(std::u16string_view text) const;
    reference::Measure measure(reference::SearchExplanation const& against,
                               unsigned long index) const;
    Indices found(std::u16string_view text, IsRejected const& isRejected);

    EntryList const& list_;
    SearchTerms const& terms_;
    Wanted wanted_;
    reference::ExcludedWords const& excluded_;
    std::size_t leftOut_ = 0;
};

// Tells so, on standard error, where there are any.
void noteLeftOut(std::size_t matches);

}  // namespace near_text
