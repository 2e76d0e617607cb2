// The search as sets of words: the plain path, short, exact and allocating. Tests hold the fast one
// against it.
#pragma once

#include "compare/utf16_string.h"
#include "search/section_scanner.h"
#include "search/word_sets.h"

namespace comparer {

class PlainSearch {
public:
    // `searchText` is the text's first section. The texts outlive this.
    PlainSearch(Utf16View searchText, Utf16View exclusions, unsigned short separator);

    // `entry` holds a word. The memory that it takes grows with the entry and is released.
    bool isMatch(Utf16View entry, unsigned long limit) const;

private:
    WordSet exclusions_;
    WordSet searchWords_;  // without the exclusions
};

}  // namespace comparer
