// Each unit is whitespace, the end of a section or part of a word, tested in that order:
//
//   " one two,b b"  at ','  ->  (length 8: one/0 two/1)  (length 4: b/0)
#include "search/mark_input.h"

#include "compare/words.h"
#include "search/section_scanner.h"

using namespace comparer;

std::vector<PStringRefSection> markInput(PStringRef<unsigned short> const& input,
                                         unsigned short separator) {
    std::list<PStringRefSection> sectionList;
    SectionScanner scanner({input.text(), input.length()}, separator);
    for (Section found; scanner.next(found);) {
        WordSet words;
        unsigned short const* firstWord = nullptr;
        int ordinal = 0;
        forEachWord(found.text, [&](Utf16View word) {
            if (firstWord == nullptr) firstWord = word.data();
            words.emplace(word.data(), word.size(), ordinal++);
        });
        if (words.empty()) continue;
        PStringRefSection section;
        section.setReference({firstWord, found.length});
        section.setWords(std::move(words));
        sectionList.push_back(section);
    }
    return list2vector(sectionList);
}
