// Shows a search only the entries of a list that can match, where that is quicker than to show it
// all of them. No answer depends on it.
#pragma once

#include <atomic>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string_view>
#include <utility>

#include "near_text/matching/index/entry_index.h"
#include "near_text/matching/search_terms.h"

namespace near_text {

// For all threads of a run. What it is given is the caller's and outlives it.
class Shortlist {
public:
    // Searches that go without. Making the index takes about as long as ten: so no run takes more
    // than twice the time of the quicker way, whichever that is.
    static constexpr std::size_t kSearchesWithout = 10;

    Shortlist(EntryList const& searchedList, reference::ExcludedWords const& excludedWords,
              int lengthThreshold)
        : list_(searchedList), excluded_(excludedWords), threshold_(lengthThreshold) {}

    // Entries among which are all that match `text`; nothing where the whole list is to be
    // searched.
    std::optional<Indices> entriesFor(std::u16string_view text, Percentages percentages);

private:
    // What two percentages have left so far.
    struct Experience {
        SearchLimits limits;
        std::size_t texts = 0;   // that the index was asked about
        std::size_t left = 0;    // entries that it left, of all those texts
        std::size_t passed = 0;  // texts that it was not asked about

        bool isPaying(std::size_t entries) const;
    };

    // Null where it does not pay to ask the index.
    Experience* experienceOf(Percentages percentages);
    // Made by the first thread that asks. Until it is there the others get null and go without.
    EntryIndex const* readyIndex();

    EntryList const& list_;
    reference::ExcludedWords const& excluded_;
    int const threshold_;
    std::atomic<std::size_t> searches_ = 0;
    std::atomic_flag isBegun_;
    std::unique_ptr<EntryIndex const> index_;
    std::atomic<EntryIndex const*> ready_ = nullptr;
    std::mutex mutex_;  // of all experience but the limits, which do not change
    std::map<std::pair<int, int>, Experience> experience_;
};

}  // namespace near_text
