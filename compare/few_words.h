// The words of a short text, told apart where they stand: no copy, no allocation.
//
// Counting words in maps costs more than all the rest of a short comparison, and few texts need it:
// a word that comes once in each of the two simply goes from both. Only where a shared word repeats
// does it matter which of its occurrences go, and that rule stays with the maps.
#pragma once

#include <array>

#include "compare/text_shape.h"
#include "compare/utf16_string.h"

class FewWords {
public:
    static constexpr unsigned long kMost = 16;

    // `shape` has at most kMost words; its text must outlive this.
    explicit FewWords(TextShape const& shape);

    // Takes out of both the words that come a single time in each: they cancel and leave no trace.
    static void cancelSingles(FewWords& first, FewWords& second);

    bool sharesWordWith(FewWords const& other) const;

    // Of the words that are left: their units, and the words themselves with nothing between them.
    unsigned long units() const;
    Utf16String joined() const;

private:
    struct Word {
        unsigned short const* text;
        unsigned long length;

        bool operator==(Word const& other) const;
    };

    unsigned long count(Word const& word) const;
    Word& find(Word const& word);

    std::array<Word, kMost> words;  // a word that was taken out has length 0
    unsigned long size = 0;
};
