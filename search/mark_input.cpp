// Each unit is whitespace, the end of a section or part of a word, tested in that order:
//
//   " one two,b b"  at ','  ->  (length 8: one/0 two/1)  (length 4: b/0)
#include "search/mark_input.h"

#include "compare/words.h"

WordSet markWords(Stretch const& stretch) {
    WordSet words;
    int ordinal = 0;
    forEachWord(stretch.text, stretch.units, [&](unsigned short const* text, unsigned long length) {
        // Made only for a new word: a long section may repeat few words without end.
        PStringRefPrivate<unsigned short, unsigned long> const word{text, length, ordinal++};
        auto const key = PStringRef<unsigned short>::borrowing(word);
        auto const place = words.lower_bound(key);
        if (place == words.end() || key < *place)
            words.emplace_hint(place, text, length, word.ordinal);
    });
    return words;
}

std::vector<PStringRefSection> markInput(PStringRef<unsigned short> const& input,
                                         unsigned short separator) {
    std::list<PStringRefSection> sectionList;
    StretchReader reader(input, separator);
    for (Stretch stretch; reader.next(stretch);) {
        if (stretch.wordUnits == 0) continue;
        unsigned short const* firstWord = stretch.text;
        while (isWhiteSpaceUnit(*firstWord))
            ++firstWord;
        PStringRefSection section;
        section.setReference({firstWord, stretch.length});
        section.setWords(markWords(stretch));
        sectionList.push_back(section);
    }
    return list2vector(sectionList);
}
