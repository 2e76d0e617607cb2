// Cuts an entry into words, and tells by their fingerprints which of them need to be looked up.
#pragma once

#include <span>

#include "compare/fixed_buffer.h"
#include "compare/utf16_string.h"
#include "search/fingerprints.h"

namespace comparer {

struct CutWord {
    Utf16View text;
    Fingerprint fingerprint;
};

// An entry, cut.
struct CutEntry {
    Utf16View text;
    std::span<CutWord const> words;
    // The cutter has room for all words, or as many of them as were too many units.
    bool isComplete = true;
    // Of the words with a fingerprint that was not seen before: they are neither excluded nor
    // repeats, and so at least these count.
    unsigned long units = 0;
    // Those of known words, and those that two words of the entry have.
    FingerprintSet toLookUp;
};

class EntryCutter {
public:
    // Has room for so many words, repeats included.
    explicit EntryCutter(unsigned long room) : room_(room), words_(room) {}

    void addExcluded(Utf16View word) {
        excluded_.add(fingerprintOf(word));
        known_.add(fingerprintOf(word));
    }
    void addSearched(Utf16View word) { known_.add(fingerprintOf(word)); }

    // Stops when more than `mostUnits` units of it count, or there is no room. The result is the
    // cutter's, until it cuts another entry.
    CutEntry const& cut(Utf16View entry, unsigned long mostUnits);

private:
    unsigned long const room_;
    FixedBuffer<CutWord, 1> words_;
    FingerprintSet excluded_;
    FingerprintSet known_;
    CutEntry cut_;
};

}  // namespace comparer
