// Shows a search only the entries of a list that can match, where that is quicker than to show it
// all of them. No answer depends on it.
//
// An index of the list is made when some searches have gone without, so that few texts do not pay
// for it; and it is not asked where experience says that it leaves most of the list.
#pragma once

#include <atomic>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string_view>

#include "near_text/entry_index.h"

namespace near_text {

// How alike an entry must be: one no longer than the threshold, and a longer one.
struct Percentages {
    int forShort;
    int forLong;

    auto asPair() const { return std::pair(forShort, forLong); }
};

// For all threads. What it is given is the caller's and outlives it.
class Shortlist {
public:
    Shortlist(EntryList const& searchedList, stand_in_host::ExcludedWords const& excludedWords,
              int lengthThreshold)
        : list(searchedList), excluded(excludedWords), threshold(lengthThreshold) {}

    // Entries among which are all that match `text`; nothing where the whole list is to be
    // searched.
    std::optional<Indices> entriesFor(std::u16string_view text, Percentages percentages);

private:
    // What is known of one pair of percentages.
    struct Experience {
        SearchLimits limits;
        std::size_t texts = 0;   // that the index was asked about
        std::size_t left = 0;    // entries that it left, of all of them
        std::size_t passed = 0;  // texts for which it was not asked

        bool isPaying(std::size_t entries) const;
    };

    EntryList const& list;
    stand_in_host::ExcludedWords const& excluded;
    int const threshold;
    std::atomic<std::size_t> searches = 0;
    std::once_flag isIndexed;
    std::unique_ptr<EntryIndex const> index;
    std::mutex mutex;  // for what follows
    std::map<std::pair<int, int>, Experience> experience;
};

}  // namespace near_text
