// Of a word that the first text holds k times and the second m times, the first k - m occurrences
// are left of the first text, or the first m - k of the second: its balance, the one way or the
// other. One walk over both texts finds the balances, a second one the occurrences that are left.
//
//   first   a b a c      balance  a  2 - 1      left   a b
//   second  c a          b 1,  c  1 - 1                -
#include "compare/word_comparison.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>
#include <cstring>

#include "compare/bag_distance.h"
#include "compare/bit_parallel_distance.h"
#include "compare/fixed_buffer.h"
#include "compare/white_space.h"
#include "compare/word_list.h"
#include "compare/words.h"

namespace comparer {

namespace {

// True when the texts are surely further apart than `limit`. Without exclusions every word of both
// sides stays or cancels, so both numbers of the bag distance count.
bool exceedsBagDistance(TextMeasures const& first, TextMeasures const& second,
                        unsigned long limit) {
    constexpr unsigned long kMaxUnits = INT16_MAX;
    if (std::max(first.text.size(), second.text.size()) > kMaxUnits) return false;
    unsigned long const missing = missingUnits(first.text, second.text);
    return missing > limit || second.wordUnits + missing > first.wordUnits + limit;
}

// One bit for each of 64 buckets that a text has units in, those of whitespace left out.
std::uint64_t coarseBucketsOf(Utf16View text) {
    std::uint64_t buckets = 0;
    for (unsigned short const unit : text)
        buckets |= std::uint64_t{1} << unit % 64U;
    for (unsigned short const white : kWhiteSpaceUnits)
        buckets &= ~(std::uint64_t{1} << white % 64U);
    return buckets;
}

// A coarser bound at less cost: the buckets of 64 that one side has units in and the other has
// none. With more than a few edits allowed it hardly ever tells.
constexpr unsigned long kFewEdits = 6;
bool exceedsBucketDifference(TextMeasures const& first, TextMeasures const& second,
                             unsigned long limit) {
    std::uint64_t const firstBuckets = coarseBucketsOf(first.text);
    std::uint64_t const secondBuckets = coarseBucketsOf(second.text);
    auto const count = [](std::uint64_t bits) {
        return static_cast<unsigned long>(std::popcount(bits));
    };
    return count(firstBuckets & ~secondBuckets) > limit ||
           count(secondBuckets & ~firstBuckets) > limit;
}

// Near texts mostly begin or end alike, and no bound can reject them.
template <unsigned long kUnits>
bool beginOrEndAlike(Utf16View first, Utf16View second) {
    if (std::min(first.size(), second.size()) < kUnits) return false;
    auto const areAlike = [](unsigned short const* a, unsigned short const* b) {
        return std::memcmp(a, b, kUnits * sizeof *a) == 0;
    };
    return areAlike(first.data(), second.data()) ||
           areAlike(first.data() + first.size() - kUnits, second.data() + second.size() - kUnits);
}

// True when the texts are surely further apart than `limit`, as far as it pays to find out. Without
// exclusions.
bool areSurelyFurther(TextMeasures const& first, TextMeasures const& second, unsigned long limit,
                      bool isDistanceNext) {
    auto const [fewer, more] = std::minmax(first.wordUnits, second.wordUnits);
    if (more - fewer > limit) return true;
    // The distance of short texts is known as soon as a bound that lets many through.
    constexpr unsigned long kVeryFewEdits = 4;
    if (isDistanceNext && fewer <= MatchVector<Rows64>::kRows && limit > kVeryFewEdits)
        return false;
    if (limit <= kFewEdits) {
        return !beginOrEndAlike<2>(first.text, second.text) &&
               exceedsBucketDifference(first, second, limit);
    }
    // With a greater limit few texts lack so many units.
    return 4 * fewer > 5 * limit && !beginOrEndAlike<8>(first.text, second.text) &&
           exceedsBagDistance(first, second, limit);
}

// Of a text with one word.
Utf16View onlyWord(TextMeasures const& text) {
    unsigned long start = 0;
    while (isWhiteSpaceUnit(text.text[start]))
        ++start;
    return text.text.substr(start, text.wordUnits);
}

class WordBalance {
public:
    WordBalance(TextMeasures const& first, TextMeasures const& second)
        : texts_{first.text, second.text},
          list_(first.words + second.words, texts_),
          balance_(first.words + second.words),
          words_(first.words + second.words),
          places_(first.words + second.words),
          firstCount_(first.words),
          count_(first.words + second.words) {
        Utf16View* word = words_.data();
        for (TextMeasures const* text : {&first, &second})
            forEachWord(text->text, [&word](Utf16View found) { *word++ = found; });
        assert(word == words_.data() + count_);
        std::fill_n(balance_.data(), count_, 0);
        for (unsigned long i = 0; i < count_; ++i) {
            places_[i] = list_.findOrAdd(words_[i]);
            balance_[places_[i]] += i < firstCount_ ? 1 : -1;
        }
    }

    void exclude(Utf16View word) {
        if (word.empty()) return;
        std::uint32_t const place = list_.find(word);
        if (place != WordList::kNotFound) balance_[place] = 0;
    }

    // What is left of each text. Each to be asked once: the words move together.
    Pieces firstLeft() { return left(0, firstCount_, 1); }
    Pieces secondLeft() { return left(firstCount_, count_, -1); }

private:
    Pieces left(unsigned long begin, unsigned long end, int sign) {
        Utf16View* out = words_.data() + begin;
        unsigned long units = 0;
        for (unsigned long i = begin; i < end; ++i) {
            // Branch-free.
            int& balance = balance_[places_[i]];
            unsigned const stays = balance * sign > 0 ? 1 : 0;
            *out = words_[i];
            out += stays;
            units += stays * words_[i].size();
            balance -= static_cast<int>(stays) * sign;
        }
        return {{words_.data() + begin, out}, units};
    }

    std::array<Utf16View, 2> const texts_;
    WordList list_;
    FixedBuffer<int, WordList::kFewWords> balance_;           // by place in the list
    FixedBuffer<Utf16View, WordList::kFewWords> words_;       // of both texts, in order
    FixedBuffer<std::uint32_t, WordList::kFewWords> places_;  // of these, in the list
    unsigned long const firstCount_;
    unsigned long const count_;
};

}  // namespace

std::optional<bool> compareByWordList(TextMeasures const& first, TextMeasures const& second,
                                      unsigned long limit,
                                      std::span<Utf16String const> exclusions) {
    bool const areSingleWords = first.words == 1 && second.words == 1 && exclusions.empty();
    if (exclusions.empty() && areSurelyFurther(first, second, limit, areSingleWords)) return false;
    if (areSingleWords) {
        // Two equal words need not cancel: their distance is 0.
        Utf16View const only[] = {onlyWord(first), onlyWord(second)};
        return isWithin(limit, Pieces(only[0]), Pieces(only[1]));
    }
    if (first.words + second.words > WordList::kMaxCapacity) return {};
    WordBalance words(first, second);
    for (Utf16String const& word : exclusions)
        words.exclude(word);
    return isWithin(limit, words.firstLeft(), words.secondLeft());
}

}  // namespace comparer
