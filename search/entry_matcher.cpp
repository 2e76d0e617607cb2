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
#include "compare/text_measures.h"
#include "compare/words.h"
#include "search/section_scanner.h"

namespace comparer {

namespace {

// As many as there will be or, where the exclusions are long, some that the list grows from.
unsigned long firstCapacity(Utf16View searchText, Utf16View exclusions, unsigned long entryWords) {
    constexpr unsigned long kMost = 512;
    return TextMeasures(searchText).words + entryWords + std::min(exclusions.size() / 2 + 1, kMost);
}

}  // namespace

EntryMatcher::EntryMatcher(Utf16View searchText, Utf16View dictionary, Utf16View exclusions,
                           unsigned short separator, std::span<Utf16View const> samples,
                           unsigned long entryWords)
    : texts_{dictionary, searchText, exclusions},
      entryWords_(entryWords),
      words_(firstCapacity(searchText, exclusions, entryWords), texts_),
      cutter_(entryWords) {
    assert(searchText.size() <= kMaxTextLength && entryWords <= kEntryWords);
    SectionScanner scanner(exclusions, separator);
    for (Section section; scanner.next(section);)
        forEachWord(section.text, [this](Utf16View word) { words_.findOrAdd(word); });
    exclusionsEnd_ = words_.size();
    for (Utf16View const word : words_.words())
        cutter_.addExcluded(word);
    forEachWord(searchText, [this](Utf16View word) { words_.findOrAdd(word); });
    searchEnd_ = words_.size();
    for (Utf16View const word : words_.words().subspan(exclusionsEnd_))
        cutter_.addSearched(word);
    search_.emplace(words_, exclusionsEnd_, samples);
}

bool EntryMatcher::isMatchByWords(Utf16View entry, unsigned long limit) {
    unsigned long const searchUnits = search_->units();
    // More units than these that count are too many.
    unsigned long mostUnits = limit + searchUnits;
    // About a quarter may be whitespace and repeats. With a small limit units that are missing tell
    // sooner.
    constexpr unsigned long kSmallLimit = 16;
    bool const isLikelyTooLong =
        entry.size() - entry.size() / 4 > mostUnits && kSmallLimit * limit > searchUnits;
    CutEntry const* cut = isLikelyTooLong ? &cutter_.cut(entry, mostUnits) : nullptr;
    if (cut != nullptr && cut->units > mostUnits) return false;
    unsigned long const missing = search_->missingIn(entry, limit);
    if (missing > limit) return false;
    mostUnits -= missing;
    if (cut == nullptr) cut = &cutter_.cut(entry, mostUnits);
    if (cut->units > mostUnits) return false;

    auto left = leftOf(*cut, mostUnits);
    if (!left) return false;
    left->textEnd = texts_[0].data() + texts_[0].size();
    return search_->isLeftWithin(limit, *left);
}

std::optional<Pieces> EntryMatcher::leftOf(CutEntry const& entry, unsigned long mostUnits) {
    words_.cutBackTo(searchEnd_);
    search_->restore();
    unsigned long const units =
        entry.isComplete ? takeCut(entry, mostUnits) : takeMany(entry.text, mostUnits);
    if (units > mostUnits) return {};
    return Pieces(words_.words().subspan(searchEnd_), units - search_->cancelledUnits());
}

unsigned long EntryMatcher::takeCut(CutEntry const& entry, unsigned long mostUnits) {
    unsigned long units = 0;
    for (CutWord const& word : entry.words) {
        if (units > mostUnits) break;
        if (entry.toLookUp.has(word.fingerprint)) {
            units += take(word.text);
        } else {
            words_.append(word.text);
            units += word.text.size();
        }
    }
    return units;
}

// Whether surely too many units count is asked when more than a few words are left over, before
// these cost much, and room for many is made only when they do not.
unsigned long EntryMatcher::takeMany(Utf16View entry, unsigned long mostUnits) {
    constexpr unsigned long kFewWords = 32;
    unsigned long units = 0;
    bool isAsked = false;
    bool isRoomMade = false;
    bool hasMore = false;
    forEachWordWhile(entry, [&](Utf16View word) {
        unsigned long const left = words_.size() - searchEnd_;
        if (left == kFewWords && !isAsked) {
            isAsked = true;
            hasMore = hasMoreUnits(entry, mostUnits);
            if (hasMore) return false;
        }
        if (left == entryWords_ && !isRoomMade) {
            isRoomMade = true;
            unsigned long count = 0;
            forEachWord(entry, [&count](Utf16View) { ++count; });
            words_.reserve(searchEnd_ + std::min(count, mostUnits + 1));
        }
        units += take(word);
        return units <= mostUnits;
    });
    return hasMore ? mostUnits + 1 : units;
}

unsigned long EntryMatcher::take(Utf16View word) {
    std::uint32_t const end = words_.size();
    std::uint32_t const place = words_.findOrAdd(word);
    if (place == end) return word.size();
    bool const isSearched = exclusionsEnd_ <= place && place < searchEnd_;
    return isSearched && search_->cancel(place - exclusionsEnd_) ? word.size() : 0;
}

// A place that is new belongs to a word that is new, so this never counts a repeat, and an excluded
// word neither.
bool EntryMatcher::hasMoreUnits(Utf16View entry, unsigned long mostUnits) {
    // They have to be marked anew for each entry.
    if (exclusionsEnd_ > kEntryWords) return false;
    if (!seen_) seen_ = std::make_unique<Seen>();
    seen_->reset();
    auto const isNew = [this](Utf16View word) {
        auto place = (*seen_)[(words_.hash(word) >> 32U) % kSeen];
        bool const wasSeen = place;
        place = true;
        return !wasSeen;
    };
    for (Utf16View const word : words_.words().first(exclusionsEnd_))
        isNew(word);
    unsigned long units = 0;
    return !forEachWordWhile(entry, [&](Utf16View word) {
        units += (isNew(word) ? 1U : 0U) * word.size();  // branch-free
        return units <= mostUnits;
    });
}

}  // namespace comparer
