// Why two texts are alike or not: both methods' answers with all that led to them, worked out in
// the plainest way, apart from the add-in and without any of its code. People read it; tests hold
// the add-in against it.
//
// Lengths, limits and distances count 16-bit units. The arguments are ones that the add-in accepts:
// nothing is tested here, and neither text is too long. A percentage above 100 demands as much as
// 100 does.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "stand_in_host/component.h"

namespace stand_in_host {

struct SideBySide {
    std::vector<std::u16string> cancelled;  // words of both sides, in the first side's order
    std::vector<std::u16string> excluded;   // words that counted on neither side, each once
    std::u16string firstLeft;               // what was left of each side, run together
    std::u16string secondLeft;
    unsigned long length;   // the longer side's, of which the percentage leaves the limit
    unsigned long percent;  // the one that applied
    unsigned long limit;
    unsigned long distance;
    bool isAlike;
};

// Of two texts. A word cancels as often as both texts hold it.
SideBySide explainCompare(std::u16string_view first, std::u16string_view second,
                          unsigned long percent,
                          std::vector<std::u16string> const& exclusions = {});

// A part of a text: its words, each once, in the order of their first occurrence, and its length,
// which counts whitespace and the unit that opened it.
struct PlainSection {
    std::vector<std::u16string> words;
    unsigned long length;
};

// Of a search text against each entry that holds a word, by the add-in's index. There are no
// entries where there is nothing to search.
class SearchExplanation {
public:
    // The texts behind `arguments` are read now and not kept.
    explicit SearchExplanation(SearchArguments const& arguments);

    std::size_t size() const { return entries.size(); }
    // Worked out anew at each call. `index` is below `size()`.
    SideBySide entry(std::size_t index) const;

private:
    PlainSection text;
    std::vector<PlainSection> entries;
    std::vector<std::u16string> exclusions;
    unsigned long lengthThreshold;
    unsigned long percentShort;
    unsigned long percentLong;
};

// All entries of a SearchExplanation.
std::vector<SideBySide> explainSearch(SearchArguments const& arguments);

}  // namespace stand_in_host
