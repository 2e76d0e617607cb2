// Holds the entries of a list against one search text.
//
// All words are in one list, one behind the other, and their place tells what they are:
//
//   | exclusions | words of the search text | left-over words of the entry at hand |
//                                            '- cut back before each entry
//
// An entry's word that is found among the first counts on neither side, among the second it
// cancels, among the third it is a repeat; one that is not found is added, and is left over. So
// what is left of an entry lies there in text order, and no entry needs memory of its own.
#pragma once

#include <algorithm>
#include <array>
#include <bitset>
#include <memory>
#include <optional>
#include <span>

#include "compare/bit_parallel_distance.h"
#include "compare/utf16_string.h"
#include "compare/word_list.h"
#include "search/entry_cutter.h"
#include "search/search_side.h"

namespace comparer {

class EntryMatcher {
public:
    // Few entries have more words; those that have take memory that is kept.
    static constexpr unsigned long kEntryWords = 256;

    // `searchText` is the text's first section, of at most 1000 units. Entries are parts of
    // `dictionary`. `samples` are texts of it, or empty; they make no difference to an answer.
    // `entryWords` are as many as an entry is likely to have, kEntryWords at most. All texts
    // outlive this.
    EntryMatcher(Utf16View searchText, Utf16View dictionary, Utf16View exclusions,
                 unsigned short separator, std::span<Utf16View const> samples,
                 unsigned long entryWords);
    EntryMatcher(EntryMatcher const&) = delete;
    EntryMatcher& operator=(EntryMatcher const&) = delete;

    // A unit that few entries hold, as far as the samples tell, and that a match within 0 edits
    // must hold; nothing where there is none.
    std::optional<unsigned short> neededUnit() { return search_->rarestUnit(); }

    // True when what is left of `entry`, which holds a word, is within `limit` edits of what is
    // left of the search text.
    bool isMatch(Utf16View entry, unsigned long limit) {
        // Most entries need no more.
        unsigned long const searchUnits = search_->units();
        if (std::max(searchUnits, entry.size()) <= limit) return true;
        if (searchUnits > entry.size() + limit) return false;
        return isMatchByWords(entry, limit);
    }

private:
    bool isMatchByWords(Utf16View entry, unsigned long limit);
    // Which places came up, told by the half of a hash that the list does not keep.
    static constexpr unsigned long kSeen = 1UL << 17;
    using Seen = std::bitset<kSeen>;

    // Cancels the entry's words against the search side's, and gives those that are left; nothing
    // when more than `mostUnits` units count.
    inline std::optional<Pieces> leftOf(CutEntry const& entry, unsigned long mostUnits);
    // Both give how many units count, or more than `mostUnits`.
    unsigned long takeCut(CutEntry const& entry, unsigned long mostUnits);
    unsigned long takeMany(Utf16View entry, unsigned long mostUnits);
    // Gives the units of the word that count.
    unsigned long take(Utf16View word);
    // True when surely more than `mostUnits` units of the entry count. Takes any number of words.
    bool hasMoreUnits(Utf16View entry, unsigned long mostUnits);

    std::array<Utf16View, 3> const texts_;
    unsigned long const entryWords_;
    WordList words_;
    std::uint32_t exclusionsEnd_;
    std::uint32_t searchEnd_;
    EntryCutter cutter_;
    std::optional<SearchSide> search_;  // made when its words are listed
    std::unique_ptr<Seen> seen_;
};

}  // namespace comparer
