// Holds the entries of a list against one search text.
//
// All words are in one list, one behind the other, and their place tells what they are:
//
//   | exclusions | words of the search text | left-over words of the entry at hand |
//                                            '- cut back after each entry
//
// An entry's word that is found among the first counts on neither side, among the second it
// cancels, among the third it is a repeat; one that is not found is added, and is left over. So
// what is left of an entry lies there in text order, and no entry needs memory of its own. Most
// words have a fingerprint that no other has, and are left over without being looked up.
#pragma once

#include <bitset>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "compare/bag_distance.h"
#include "compare/bit_parallel_distance.h"
#include "compare/utf16_string.h"
#include "compare/word_list.h"
#include "search/fingerprints.h"
#include "search/plain_search.h"

class EntryMatcher {
public:
    // Few entries have more words; those that have are cut again when their words cancel.
    static constexpr unsigned long kEntryWords = 256;

    // `searchText` is the text's first section, of at most 1000 units. `samples` are texts of the
    // list, or empty; they make no difference to an answer. The list has room for `entryWords`
    // words of an entry; one with more takes memory that is kept. All texts outlive this.
    EntryMatcher(Utf16View searchText, Utf16View exclusions, unsigned short separator,
                 std::span<Utf16View const> samples, unsigned long entryWords);

    // A unit that few entries hold, as far as the samples tell, and that a match within 0 edits
    // must hold; nothing where there is none or nothing is known.
    std::optional<unsigned short> neededUnit();

    // True when what is left of `entry`, which holds a word, is within `limit` edits of what is
    // left of the search text. The text that the entry is part of can be read up to `textEnd`.
    bool isMatch(Utf16View entry, unsigned short const* textEnd, unsigned long limit);

private:
    // The rows of the joined search words, and of what is left of them.
    template <class Rows>
    struct SearchRows {
        explicit SearchRows(Pieces searchWords);

        MatchVector<Rows> all;
        MatchVector<Rows> rest;
    };

    enum class Cancelling { Done, TooManyUnits, NoRoom, Colliding };

    // False when there is no room for a word.
    bool fillList();
    bool isHistogramUseful(Utf16View entry, unsigned long limit) const;
    UnitHistogram const& orderedHistogram();
    // Cuts the entry into words, until more than `mostUnits` units of it count or there is no room
    // (`hasRoom_`). Gives how many count, at least: a word with a fingerprint that was not seen is
    // surely neither excluded nor a repeat.
    unsigned long cut(Utf16View entry, unsigned long mostUnits);
    Pieces searchWords() const {
        return {words_.words().subspan(exclusionsEnd_, cancelledBy_.size()), histogram_.size()};
    }
    // Cancels the words of the entry that was cut. Gives up when more than `mostUnits` units count.
    Cancelling cancel(Utf16View entry, unsigned long mostUnits);
    // Looks up one word of the entry.
    Cancelling take(Utf16View word);
    // The rows of the search words without those that the entry cancelled.
    template <class Rows>
    MatchVector<Rows> const& leftOf(SearchRows<Rows>& rows) const;
    // Of what the last `cancel` left.
    bool isLeftWithin(unsigned short const* textEnd, unsigned long limit);
    // True when surely more than `mostUnits` units of the entry count. Takes any number of words.
    bool hasMoreUnits(Utf16View entry, unsigned long mostUnits);
    // As isMatch, by a list with room for all words of the entry, which is kept for others.
    bool withRoom(Utf16View entry, unsigned short const* textEnd, unsigned long limit);
    bool plainly(Utf16View entry, unsigned long limit);

    struct CutWord {
        Utf16View text;
        Fingerprint fingerprint;
    };

    // Of words too many for the list: only which hashes came up.
    static constexpr unsigned long kHashes = 1UL << 17;
    using Hashes = std::bitset<kHashes>;

    Utf16View const searchText_;
    Utf16View const exclusions_;
    unsigned short const separator_;
    std::span<Utf16View const> const samples_;
    unsigned long const entryWords_;

    WordList words_;
    std::uint32_t exclusionsEnd_ = 0;
    std::uint32_t searchEnd_ = 0;
    FingerprintSet ofExclusions_;
    FingerprintSet ofListed_;  // exclusions and search words
    bool isListed_ = false;    // false when the exclusions or the search words found no room

    bool isOrdered_ = false;                       // the histogram is, from its first use on
    UnitHistogram histogram_;                      // of the search words
    std::vector<unsigned long> cancelledBy_;       // by search word: the last entry that holds it
    std::optional<SearchRows<Rows64>> fewRows_;    // of up to 64 units of search words
    std::optional<SearchRows<Rows128>> moreRows_;  // of up to 128

    // Of the entry at hand.
    unsigned long const cutRoom_;    // words of it that can be held
    FixedBuffer<CutWord, 1> entry_;  // these, repeats included
    unsigned long cutWords_ = 0;
    unsigned long cutUnits_ = 0;
    FingerprintSet toLookUp_;  // those of listed words, and those that two words of it have
    bool hasRoom_ = true;      // for all its words
    unsigned long entryNumber_ = 0;
    unsigned long countedUnits_ = 0;  // of words that are left over or cancel
    unsigned long cancelledUnits_ = 0;

    std::vector<Utf16View> searchLeft_;
    BandedDistance banded_;
    std::unique_ptr<Hashes> hashes_;
    std::unique_ptr<EntryMatcher> roomier_;
    std::optional<PlainSearch> plain_;
};
