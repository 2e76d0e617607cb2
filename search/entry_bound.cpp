// Let S be the units of the search words and W the entry's units less whitespace.
//
//   what is left of the two sides is no longer than S and W     both within the limit: near
//   units of S that the entry lacks                             more than the limit: too far
//   units of the entry beyond S, less words that may go anyhow  more than the limit: too far
#include "search/entry_bound.h"

#include <algorithm>

#include "compare/words.h"

EntryBound::EntryBound(WordSet const& searchWords, WordSet const& exclusions) {
    for (auto const& word : searchWords)
        balance.add(word.text(), word.length());
    for (auto const& word : exclusions)
        excluded.set(markOf(word.text(), word.length()));
}

EntryBound::Verdict EntryBound::judge(Stretch const& entry, unsigned long limit) const {
    unsigned long const searchUnits = balance.total();
    if (std::max(searchUnits, entry.wordUnits) <= limit) return Verdict::Near;
    if (searchUnits > entry.wordUnits + limit) return Verdict::TooFar;
    // A long entry is likely to hold every unit that a short text has, so its units are not
    // counted.
    constexpr unsigned long kMuchLonger = 4;
    bool const isMuchLonger = entry.wordUnits > kMuchLonger * (searchUnits + limit);
    unsigned long const missing = isMuchLonger ? 0 : balance.missingIn(entry.text, entry.units);
    if (missing > limit) return Verdict::TooFar;
    unsigned long const most = limit + (searchUnits - missing);  // units beyond these are surplus
    if (entry.wordUnits > most && entry.wordUnits - unitsThatMayGo(entry) > most) {
        return Verdict::TooFar;
    }
    return Verdict::Unknown;
}

unsigned EntryBound::markOf(unsigned short const* text, unsigned long length) {
    unsigned const ends = text[0] * 5U + text[length - 1] * 11U;
    return (ends + text[length / 2] * 23U + static_cast<unsigned>(length) * 67U) % kMarks;
}

unsigned long EntryBound::unitsThatMayGo(Stretch const& entry) const {
    auto gone = excluded;
    unsigned long units = 0;
    forEachWord(entry.text, entry.units, [&](unsigned short const* text, unsigned long length) {
        unsigned const mark = markOf(text, length);
        if (gone.test(mark)) units += length;
        gone.set(mark);
    });
    return units;
}
