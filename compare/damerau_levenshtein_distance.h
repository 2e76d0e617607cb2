// The comparison of two whole texts, in two forms.
//
// wordInsansitiveCompareStrings is what the host's method answers: words that both texts hold
// cancel out one for one, wherever they stand, and the edit distance of what is left is held
// against a limit from the whole lengths. It touches no member. compareStrings is a plain distance
// test with transpositions over a table inside the object; only one such call at a time may run on
// one object.
//
// Texts are pointers to 16-bit units with a length in units; a pointer may be null when its length
// is 0. Percentages run from 0 to 100. Above that the word-insensitive comparison demands as much
// as 100; compareStrings then finds no two texts alike, unless both are empty. Nothing here fails
// but an allocation: std::bad_alloc propagates.
#pragma once

#include <map>
#include <utility>
#include <vector>

#include "compare/text_limit.h"
#include "compare/utf16_string.h"

class DamerauLevenshteinDistance {
public:
    // How often a word occurs: `first` counts the occurrences not yet dropped, `second` those
    // without a partner in the other text. Never is `second` above `first`, and an entry whose
    // `second` would reach 0 by cancelling is erased.
    using WordMap = std::map<Utf16String, std::pair<unsigned long, unsigned long>>;

    // Fills row 0 and column 0 of the table.
    [[gnu::visibility("default")]] DamerauLevenshteinDistance();

    // True when the distance of the texts is within the share of the larger size that `percent`
    // leaves; neighbouring units that changed places cost one edit. The sizes serve that share
    // alone. Lengths are at most 1000; a longer text gives false. Allocates nothing.
    [[gnu::visibility("default")]] bool compareStrings(
        unsigned short const* first, unsigned long firstLength, unsigned long firstSize,
        unsigned short const* second, unsigned long secondLength, unsigned long secondSize,
        unsigned long percent);

    // Appends to `matches` the index of each entry of `list` that is similar to the text. An entry
    // longer than `lengthThreshold` is held to `percentLong`, any other to `percentShort`.
    [[gnu::visibility("default")]] void serchDuplicates(
        std::vector<unsigned long>& matches, unsigned short const* text, unsigned long length,
        std::vector<Utf16String> const& list, unsigned long lengthThreshold,
        unsigned long percentShort, unsigned long percentLong,
        std::vector<Utf16String> const& exclusions);

    // True when the texts are alike. Words of `exclusions` count on neither side, whole lengths do.
    bool wordInsansitiveCompareStrings(unsigned short const* first, unsigned long firstLength,
                                       unsigned short const* second, unsigned long secondLength,
                                       unsigned long percent,
                                       std::vector<Utf16String> const& exclusions);

    // The same for a known limit, by way of maps: the plain path. It answers what the word list has
    // no room for, and tests hold the list against it.
    bool compareByMaps(Utf16View first, Utf16View second, unsigned long limit,
                       std::vector<Utf16String> const& exclusions);

    // Appends the words of the text to `words` and returns how many units of whitespace stand
    // beyond the first of each run. A NUL ends the scan for good.
    unsigned long spaceSplit(unsigned short const* text, unsigned long length,
                             std::vector<Utf16String>& words);

    bool isWhiteSpace(unsigned short unit);

    // Counts the words of the list into `map`, both counters alike.
    void makeUniqueWordMap(WordMap& map, std::vector<Utf16String> const& words);

    // Cancels the two multisets of words against each other.
    void removeDuplicatesFromMaps(WordMap& first, WordMap& second);

    // Appends to `out`, in the order of the list and with nothing between them, the first `second`
    // occurrences of each word of `map`. Counts the map down.
    void makeAcceptibleString(WordMap& map, std::vector<Utf16String> const& words,
                              Utf16String& out);

private:
    static constexpr unsigned long kMaxLength = comparer::kMaxTextLength;

    // Cell [i][j] is the distance of the first i units of one text and the first j of the other.
    // Row 0 and column 0 never change; every other cell is written before it is read.
    unsigned long table_[kMaxLength + 1][kMaxLength + 1];
};
