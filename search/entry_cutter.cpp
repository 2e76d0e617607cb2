#include "search/entry_cutter.h"

#include "compare/words.h"

CutEntry EntryCutter::cut(Utf16View entry, unsigned long mostUnits) {
    CutWord* const first = words_.data();
    CutWord* const roomEnd = first + room_;
    CutWord* end = first;
    FingerprintSet seen = excluded_;
    FingerprintSet toLookUp = known_;
    unsigned long units = 0;
    bool isComplete = true;
    forEachWordWhile(entry, [&](Utf16View word) {
        isComplete = end != roomEnd;
        if (!isComplete) return false;
        Fingerprint const own = fingerprintOf(word);
        *end++ = {word, own};
        bool const wasSeen = seen.has(own);
        units += wasSeen ? 0 : word.size();
        seen.add(own);
        toLookUp.addIf(wasSeen, own);
        return units <= mostUnits;
    });
    return {entry, {first, end}, isComplete, units, toLookUp};
}
