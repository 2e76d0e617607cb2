#include "search/entry_cutter.h"

#include "compare/words.h"

CutEntry EntryCutter::cut(Utf16View entry, unsigned long mostUnits) {
    CutEntry cut{entry, words_.data(), 0, true, 0, known_};
    FingerprintSet seen = excluded_;
    forEachWordWhile(entry, [&](Utf16View word) {
        cut.isComplete = cut.count < room_;
        if (!cut.isComplete) return false;
        Fingerprint const own = fingerprintOf(word);
        words_[cut.count++] = {word, own};
        bool const wasSeen = seen.has(own);
        cut.units += wasSeen ? 0 : word.size();
        seen.add(own);
        cut.toLookUp.addIf(wasSeen, own);
        return cut.units <= mostUnits;
    });
    return cut;
}
