// The search text, made ready to be held against many entries: its words, the units that they have,
// and the rows of the matrix in which these stand.
//
// What is left of the text changes with each entry: its words cancel against the entry's.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "compare/bag_distance.h"
#include "compare/bit_parallel_distance.h"
#include "compare/utf16_string.h"
#include "compare/word_list.h"
#include "search/long_pattern.h"
#include "search/sparse_alignment.h"

namespace comparer {

class SearchSide {
public:
    // Its words are those of `list` from `begin` on, of 1000 units in all at most. `samples` are
    // texts that entries are like, or empty, and make no difference to an answer. All outlive this.
    SearchSide(WordList const& list, std::uint32_t begin, std::span<Utf16View const> samples);

    // Of all words.
    unsigned long units() const { return histogram_.size(); }

    // A unit of the words that few entries hold, as far as the samples tell; nothing where there is
    // none, or no sample.
    std::optional<unsigned short> rarestUnit();

    // Of the units of the words, those that `entry` lacks: at least so many. Counted where they are
    // likely to be more than `limit`; else 0: with a great limit few entries lack so many, and a
    // much longer entry is likely to lack none. Here, since it runs for most entries.
    unsigned long missingIn(Utf16View entry, unsigned long limit) {
        bool const isUseful = 3 * units() > 4 * limit && entry.size() <= 4 * (units() + limit) &&
                              entry.size() <= UnitHistogram::kMaxUnits;
        return isUseful ? orderedHistogram().missingIn(entry, limit) : 0;
    }

    // Before another entry cancels words.
    void restore() {
        ++entry_;
        cancelledCount_ = 0;
        cancelledUnits_ = 0;
    }
    // The entry has the word. False when it had it already.
    bool cancel(unsigned long word) {
        if (cancelledBy_[word] == entry_) return false;
        cancelledBy_[word] = entry_;
        cancelled_[cancelledCount_++] = static_cast<std::uint16_t>(word);
        cancelledUnits_ += words()[word].size();
        return true;
    }
    unsigned long cancelledUnits() const { return cancelledUnits_; }

    // True when what is left is within `limit` edits of what is left of the entry.
    bool isLeftWithin(unsigned long limit, Pieces const& entryLeft);

private:
    UnitHistogram const& orderedHistogram() {
        if (!isOrdered_) histogram_.orderBy(samples_);
        isOrdered_ = true;
        return histogram_;
    }
    template <class Rows>
    bool isWithinRows(std::optional<MatchVector<Rows>>& match, unsigned long limit,
                      Pieces const& entryLeft);
    // What `test` says of all words but those that the entry cancelled.
    template <class All, class Test>
    bool isWithinLeft(std::optional<All>& all, Test const& test);
    std::vector<Utf16View> wordsLeft() const;
    template <class Rows>
    void takeOutCancelled(MatchVector<Rows>& match) const;

    // The list grows, and what it holds behind them changes.
    std::span<Utf16View const> words() const {
        return list_.words().subspan(begin_, cancelledBy_.size());
    }

    WordList const& list_;
    std::uint32_t const begin_;
    std::span<Utf16View const> const samples_;
    UnitHistogram histogram_;
    bool isOrdered_ = false;  // the histogram is, from its first use on

    std::uint32_t entry_ = 0;                 // the number of the one at hand
    std::vector<std::uint32_t> cancelledBy_;  // by word: the last entry that has it
    std::vector<std::uint16_t> cancelled_;    // those that the entry at hand has, and room for all
    unsigned long cancelledCount_ = 0;
    unsigned long cancelledUnits_ = 0;

    std::optional<MatchVector<Rows64>> fewRows_;    // of up to 64 units
    std::optional<MatchVector<Rows128>> moreRows_;  // of up to 128
    std::optional<LongPattern> long_;               // of more
    std::optional<SparseAlignment> sparse_;         // of more, where few edits are to spare
};

}  // namespace comparer
