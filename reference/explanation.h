// Why two texts are alike or not: both methods' answers with all that led to them, worked out in
// the plainest way, apart from the add-in and without any of its code. People read it; tests hold
// the add-in against it.
//
// Lengths, limits and distances count 16-bit units. The arguments are ones that the add-in accepts:
// nothing is tested here, and neither text is too long. A percentage above 100 demands as much as
// 100 does.
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "host_client/search_arguments.h"

namespace reference {

// What decides.
struct Measure {
    unsigned long length;   // the longer side's, of which the percentage leaves the limit
    unsigned long percent;  // the one that applied
    unsigned long limit;
    unsigned long distance;  // of what is left of the sides
    bool isAlike;
};

// Words of a text that the caller keeps.
using Words = std::vector<std::u16string_view>;

// Run together.
std::u16string joined(Words const& words);

struct Side {
    Words words;  // that count
    Words left;   // those of them that did not cancel
};

// Refers to both texts.
struct SideBySide : Measure {
    Words cancelled;  // words of both sides, in the first side's order
    Words excluded;   // words that counted on neither side, each once
    Side first, second;
};

// Of two texts. A word cancels as often as both texts hold it.
SideBySide explainCompare(std::u16string_view first, std::u16string_view second,
                          unsigned long percent);

// How alike the sides are: the highest percentage at which they still are.
int nearness(Measure const& sides);

// Insertions, deletions and replacements of a unit, as few as make one text the other.
unsigned long distanceBetween(std::u16string_view first, std::u16string_view second);

using ExcludedWords = std::set<std::u16string_view>;

// The words of an exclusion list. They refer to it.
ExcludedWords readExclusions(std::u16string_view exclusions, char16_t separator);

// A part of a text: its words, each once, in the order of their first occurrence, and its length,
// which counts whitespace and the unit that opened it.
struct PlainSection {
    Words words;
    unsigned long length;
};

// An entry that holds a word, at the start of the list or behind a separator.
PlainSection readEntry(std::u16string_view text, bool isBehindSeparator);

// Of a search text against entries, which need not be known beforehand. What it is given is the
// caller's and outlives it; the text holds a word.
class SearchExplanation {
public:
    SearchExplanation(std::u16string_view searchText, ExcludedWords const& exclusions,
                      int threshold, int shortPercent, int longPercent);

    SideBySide explain(PlainSection const& entry) const;
    // The same without the words: about two microseconds for texts of ordinary length.
    Measure measure(PlainSection const& entry) const;

private:
    struct CountedWords {
        Words ofText, ofEntry, excluded;
    };
    CountedWords countedWords(PlainSection const& entry) const;
    Measure unjudged(PlainSection const& entry) const;

    PlainSection text_;
    ExcludedWords const& excluded_;
    unsigned long lengthThreshold_;
    unsigned long percentShort_;
    unsigned long percentLong_;
};

// Each entry that holds a word, by the add-in's index; none where there is nothing to search.
std::vector<SideBySide> explainSearch(host_client::SearchArguments const& arguments);

}  // namespace reference
