// Searches for texts in one list of entries. Everything that the program says about a list comes
// through here: which entries match is the add-in's own answer, always.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "host_client/component.h"
#include "near_text/matching/entry_list.h"
#include "near_text/matching/index/shortlist.h"

namespace near_text {

// The add-in would not search; what() is its report.
class Refused : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Of the add-in about a text of so many units: where it is too long, with its length.
std::string refusal(std::string const& report, std::size_t units);

// One object for a thread. Component, list and exclusions are the caller's and outlive it; threads
// may share list and exclusions.
class EntrySearch {
public:
    EntrySearch(host_client::Component& lentComponent, EntryList const& searchedList,
                std::u16string_view exclusionWords, int lengthThreshold,
                Shortlist* sharedShortlist = nullptr)
        : component_(lentComponent),
          list_(searchedList),
          exclusions_(exclusionWords),
          threshold_(lengthThreshold),
          shortlist_(sharedShortlist) {}

    // The entries that match `text`. Throws Refused.
    Indices find(std::u16string_view text, Percentages percentages);

    // The same where only `among`, ascending, may match; the add-in gets no other entry to see.
    Indices findAmong(std::u16string_view text, Percentages percentages, Indices const& among);

private:
    Indices ask(std::u16string_view text, Percentages percentages, std::u16string_view dictionary);

    host_client::Component& component_;
    EntryList const& list_;
    std::u16string_view exclusions_;
    int threshold_;
    Shortlist* shortlist_;        // may be null
    std::u16string shorterList_;  // of the last call, kept for its memory
};

}  // namespace near_text
