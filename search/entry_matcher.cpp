// From the cheapest test to the dearest. S and W are the units of the search words and of the
// entry's distinct words without the exclusions; m is how many units of S the entry lacks.
//
//   S and the entry's units are within the limit                          match
//   S is above the entry's units and the limit together                   no match
//   m is above the limit                                                  no match
//   W - S + m, found while the words are cut, is above the limit          no match
//   the lengths of what is left settle it                                 either
//   the distance of what is left
//
// An entry that is likely too long is cut before the units that it lacks are counted.
// compare/bag_distance.h tells why the third and fourth hold.
#include "search/entry_matcher.h"

#include <algorithm>
#include <cassert>

#include "compare/text_limit.h"
#include "compare/words.h"
#include "search/section_scanner.h"

namespace {

// Calls `use` for each word of all sections.
template <class Use>
void forEachSectionsWord(Utf16View text, unsigned short separator, Use&& use) {
    SectionScanner scanner(text, separator);
    for (Section section; scanner.next(section);)
        forEachWord(section.text, use);
}

unsigned long countWords(Utf16View text, unsigned short separator) {
    unsigned long count = 0;
    forEachSectionsWord(text, separator, [&count](Utf16View) { ++count; });
    return count;
}

}  // namespace

EntryMatcher::EntryMatcher(Utf16View searchText, Utf16View exclusions, unsigned short separator,
                           std::span<Utf16View const> samples, unsigned long entryWords)
    : searchText_(searchText),
      exclusions_(exclusions),
      separator_(separator),
      samples_(samples),
      entryWords_(entryWords),
      words_(std::min(countWords(exclusions, separator) + countWords(searchText, 0) + entryWords,
                      WordList::kMaxCapacity)),
      cutRoom_(std::min(entryWords, kEntryWords)),
      entry_(cutRoom_) {
    assert(searchText.size() <= kMaxTextLength);
    isListed_ = fillList();
}

bool EntryMatcher::fillList() {
    bool isListed = true;
    auto const add = [&](Utf16View word) {
        std::uint32_t const place = words_.findOrAdd(word);
        if (place == WordList::kNoRoom) isListed = false;
        return place;
    };
    forEachSectionsWord(exclusions_, separator_, add);
    exclusionsEnd_ = words_.size();
    for (Utf16View const word : words_.words())
        ofExclusions_.add(fingerprintOf(word));
    cancelledBy_.reserve(countWords(searchText_, 0));
    forEachWord(searchText_, [&](Utf16View word) {
        std::uint32_t const end = words_.size();
        if (add(word) != end) return;
        cancelledBy_.push_back(0);
        histogram_.add(word);
    });
    searchEnd_ = words_.size();
    for (Utf16View const word : words_.words())
        ofListed_.add(fingerprintOf(word));
    return isListed;
}

bool EntryMatcher::isMatch(Utf16View entry, unsigned short const* textEnd, unsigned long limit) {
    if (!isListed_) return plainly(entry, limit);
    unsigned long const searchUnits = histogram_.size();
    if (std::max(searchUnits, entry.size()) <= limit) return true;
    if (searchUnits > entry.size() + limit) return false;

    // More units than these that count are too many.
    unsigned long mostUnits = limit + searchUnits;
    // About a quarter may be whitespace and repeats. With a small limit units that are missing tell
    // sooner.
    constexpr unsigned long kSmallLimit = 16;
    bool const isLikelyTooLong =
        entry.size() - entry.size() / 4 > mostUnits && kSmallLimit * limit > searchUnits;
    if (isLikelyTooLong && cut(entry, mostUnits) > mostUnits) return false;
    if (isHistogramUseful(entry, limit)) {
        unsigned long const missing = orderedHistogram().missingIn(entry, limit);
        if (missing > limit) return false;
        mostUnits -= missing;
    }
    if ((isLikelyTooLong ? cutUnits_ : cut(entry, mostUnits)) > mostUnits) return false;

    switch (cancel(entry, mostUnits)) {
        case Cancelling::Done:
            return isLeftWithin(textEnd, limit);
        case Cancelling::TooManyUnits:
            return false;
        case Cancelling::Colliding:
            return plainly(entry, limit);
        case Cancelling::NoRoom:
            break;
    }
    return !hasMoreUnits(entry, mostUnits) && withRoom(entry, textEnd, limit);
}

UnitHistogram const& EntryMatcher::orderedHistogram() {
    if (!isOrdered_) histogram_.orderBy(samples_);
    isOrdered_ = true;
    return histogram_;
}

// Units that an entry lacks are the second test of all.
std::optional<unsigned short> EntryMatcher::neededUnit() {
    if (!isListed_ || samples_.empty()) return {};
    return orderedHistogram().rarest();
}

bool EntryMatcher::withRoom(Utf16View entry, unsigned short const* textEnd, unsigned long limit) {
    unsigned long const words = countWords(entry, 0);
    if (words <= entryWords_) return plainly(entry, limit);  // no list can have more room
    if (!roomier_ || roomier_->entryWords_ < words) {
        // Not by a little: a list takes in all exclusions and search words anew.
        unsigned long const room = roomier_ ? std::max(words, 2 * roomier_->entryWords_) : words;
        roomier_.reset();
        roomier_ =
            std::make_unique<EntryMatcher>(searchText_, exclusions_, separator_, samples_, room);
    }
    return roomier_->isMatch(entry, textEnd, limit);
}

// With a great limit few entries lack so many units, and a much longer entry is likely to lack
// none.
bool EntryMatcher::isHistogramUseful(Utf16View entry, unsigned long limit) const {
    unsigned long const searchUnits = histogram_.size();
    return 3 * searchUnits > 4 * limit && entry.size() <= 4 * (searchUnits + limit) &&
           entry.size() <= UnitHistogram::kMaxUnits;
}

unsigned long EntryMatcher::cut(Utf16View entry, unsigned long mostUnits) {
    FingerprintSet seen = ofExclusions_;
    toLookUp_ = ofListed_;
    cutUnits_ = 0;
    cutWords_ = 0;
    hasRoom_ = true;
    forEachWordWhile(entry, [&](Utf16View word) {
        hasRoom_ = cutWords_ < cutRoom_;
        if (!hasRoom_) return false;
        Fingerprint const own = fingerprintOf(word);
        entry_[cutWords_++] = {word, own};
        bool const wasSeen = seen.has(own);
        cutUnits_ += wasSeen ? 0 : word.size();
        seen.add(own);
        toLookUp_.addIf(wasSeen, own);
        return cutUnits_ <= mostUnits;
    });
    return cutUnits_;
}

EntryMatcher::Cancelling EntryMatcher::cancel(Utf16View entry, unsigned long mostUnits) {
    ++entryNumber_;
    countedUnits_ = 0;
    cancelledUnits_ = 0;
    words_.cutBackTo(searchEnd_);
    Cancelling result = Cancelling::Done;
    auto const go = [&] {
        if (result == Cancelling::Done && countedUnits_ > mostUnits) {
            result = Cancelling::TooManyUnits;
        }
        return result == Cancelling::Done;
    };
    if (!hasRoom_) {
        forEachWordWhile(entry, [&](Utf16View word) {
            result = take(word);
            return go();
        });
        return result;
    }
    for (unsigned long i = 0; i < cutWords_; ++i) {
        CutWord const& word = entry_[i];
        if (toLookUp_.has(word.fingerprint)) {
            result = take(word.text);
        } else if (words_.isFull()) {
            result = Cancelling::NoRoom;
        } else {
            words_.append(word.text);
            countedUnits_ += word.text.size();
        }
        if (!go()) break;
    }
    return result;
}

EntryMatcher::Cancelling EntryMatcher::take(Utf16View word) {
    std::uint32_t const end = words_.size();
    std::uint32_t const place = words_.findOrAdd(word);
    if (place == WordList::kNoRoom) {
        return words_.isFull() ? Cancelling::NoRoom : Cancelling::Colliding;
    }
    if (place < exclusionsEnd_) return Cancelling::Done;
    if (place < searchEnd_) {
        unsigned long& cancelledBy = cancelledBy_[place - exclusionsEnd_];
        if (cancelledBy == entryNumber_) return Cancelling::Done;
        cancelledBy = entryNumber_;
        cancelledUnits_ += word.size();
    } else if (place != end) {
        return Cancelling::Done;
    }
    countedUnits_ += word.size();
    return Cancelling::Done;
}

template <class Rows>
EntryMatcher::SearchRows<Rows>::SearchRows(Pieces searchWords) {
    unsigned long row = 0;
    for (Utf16View const word : searchWords.pieces) {
        for (unsigned short const unit : word)
            all.add(unit, row++);
    }
    rest = all;
}

template <class Rows>
MatchVector<Rows> const& EntryMatcher::leftOf(SearchRows<Rows>& rows) const {
    if (cancelledUnits_ == 0) return rows.all;
    rows.rest.copyRows(rows.all);
    auto const words = searchWords().pieces;
    // From the last word on, since the rows above move down.
    unsigned long row = histogram_.size();
    for (unsigned long i = words.size(); i-- > 0;) {
        row -= words[i].size();
        if (cancelledBy_[i] == entryNumber_) rows.rest.removeRows(row, words[i].size());
    }
    return rows.rest;
}

bool EntryMatcher::isLeftWithin(unsigned short const* textEnd, unsigned long limit) {
    unsigned long const rows = histogram_.size() - cancelledUnits_;
    unsigned long const units = countedUnits_ - cancelledUnits_;
    Pieces const entryLeft(words_.words().subspan(searchEnd_), units, textEnd);
    if (auto const answer = isWithinByLengths(limit, rows, units)) return *answer;
    Pieces const words = searchWords();
    auto const isPatternWithin = [&](auto& searchRows) {
        if (!searchRows) searchRows.emplace(words);
        return isWithin(limit, leftOf(*searchRows), rows, entryLeft);
    };
    if (histogram_.size() <= MatchVector<Rows64>::kRows) return isPatternWithin(fewRows_);
    if (histogram_.size() <= MatchVector<Rows128>::kRows) return isPatternWithin(moreRows_);
    searchLeft_.clear();
    searchLeft_.reserve(words.pieces.size());
    for (unsigned long i = 0; i < words.pieces.size(); ++i) {
        if (cancelledBy_[i] != entryNumber_) searchLeft_.push_back(words.pieces[i]);
    }
    return banded_.isWithin(limit, {searchLeft_, rows}, entryLeft);
}

// A hash that is new belongs to a word that is new, so this never counts a repeat, and an excluded
// word neither.
bool EntryMatcher::hasMoreUnits(Utf16View entry, unsigned long mostUnits) {
    // They have to be marked anew for each entry.
    if (exclusionsEnd_ > kEntryWords) return false;
    if (!hashes_) hashes_ = std::make_unique<Hashes>();
    hashes_->reset();
    auto const isNew = [this](Utf16View word) {
        unsigned long const place = hashOf(word) % kHashes;
        bool const wasSet = hashes_->test(place);
        hashes_->set(place);
        return !wasSet;
    };
    for (std::uint32_t place = 0; place < exclusionsEnd_; ++place)
        isNew(words_.words()[place]);
    unsigned long units = 0;
    return !forEachWordWhile(entry, [&](Utf16View word) {
        if (isNew(word)) units += word.size();
        return units <= mostUnits;
    });
}

bool EntryMatcher::plainly(Utf16View entry, unsigned long limit) {
    if (!plain_) plain_.emplace(searchText_, exclusions_, separator_);
    return plain_->isMatch(entry, limit);
}
