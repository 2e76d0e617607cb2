#include "search/entry_cutter.h"

#include "compare/words.h"

namespace comparer {

CutEntry const& EntryCutter::cut(Utf16View entry, unsigned long mostUnits) {
    CutWord* const first = words_.data();
    CutWord* const roomEnd = first + room_;
    CutWord* end = first;
    FingerprintSet seen = excluded_;
    FingerprintSet& toLookUp = cut_.toLookUp;
    toLookUp = known_;
    unsigned long units = 0;
    bool const isWhole = forEachWordWhile(entry, [&](Utf16View word) {
        if (end == roomEnd) return false;
        Fingerprint const own = fingerprintOf(word);
        *end++ = {word, own};
        bool const wasSeen = seen.has(own);
        if (!wasSeen) units += word.size();
        seen.add(own);
        toLookUp.addIf(wasSeen, own);
        return units <= mostUnits;
    });
    cut_.text = entry;
    cut_.words = {first, end};
    cut_.isComplete = isWhole || units > mostUnits;
    cut_.units = units;
    return cut_;
}

}  // namespace comparer
