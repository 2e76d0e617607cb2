// Judges an entry by its units alone, before it is cut into words. Most entries of a list are too
// far from the text, or at a low percentage near enough, for any closer look.
#pragma once

#include <bitset>

#include "compare/unit_balance.h"
#include "search/pstring_ref.h"
#include "search/stretch_reader.h"

class EntryBound {
public:
    enum class Verdict {
        Near,     // within the limit, whatever the words are
        TooFar,   // beyond it, whatever the words are
        Unknown,  // only the words can tell
    };

    // `searchWords` are those that count, without the exclusions, of a text that is no longer than
    // UnitBalance::kMostUnits.
    EntryBound(WordSet const& searchWords, WordSet const& exclusions);

    // `entry` holds a word. The verdict is always right, and allocates nothing.
    Verdict judge(Stretch const& entry, unsigned long limit) const;

private:
    // A few bits of a word. Equal words have equal marks.
    static unsigned markOf(unsigned short const* text, unsigned long length);

    // Units of words of the entry that may be repeats or excluded, and so no surplus: never too
    // few, and at times too many.
    unsigned long unitsThatMayGo(Stretch const& entry) const;

    static constexpr unsigned kMarks = 512;

    UnitBalance balance;
    std::bitset<kMarks> excluded;  // by mark
};
