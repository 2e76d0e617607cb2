// One pass over the text. Each unit is whitespace, the end of a section or part of a word, tested
// in that order:
//
//   " one two,b b"  at ','  ->  (length 8: one/0 two/1)  (length 4: b/0)
//
// Words take ordinals from 0 in each section, repeats counted though the set drops them; that
// leaves gaps, but never gives two words of a set one ordinal.
#include "search/mark_input.h"

#include "compare/white_space.h"

namespace {

// The section that is being read, and the open word in it. Counters are as wide as the index.
class SectionMarker {
public:
    void addWhiteSpace() {
        insertWord();
        ++sectionLength;
    }

    void addWordUnit(unsigned short const* unit) {
        if (wordLength == 0) wordStart = unit;
        if (sectionStart == nullptr) sectionStart = unit;
        ++wordLength;
        ++sectionLength;
    }

    void closeSection() {
        insertWord();
        if (!currentWords.empty()) {
            PStringRefSection section;
            section.setReference({sectionStart, sectionLength});
            section.setWords(currentWords);
            sectionList.push_back(section);
        }
        currentWords.clear();
        sectionStart = nullptr;
        sectionLength = 1;  // the unit that ended the section counts in the next one
        wordOrdinal = 0;
    }

    std::list<PStringRefSection> const& sections() const { return sectionList; }

private:
    void insertWord() {
        if (wordLength == 0) return;
        currentWords.insert({wordStart, wordLength, static_cast<int>(wordOrdinal)});
        ++wordOrdinal;
        wordLength = 0;
    }

    unsigned short const* wordStart = nullptr;
    unsigned long wordLength = 0;
    unsigned long wordOrdinal = 0;
    unsigned short const* sectionStart = nullptr;
    unsigned long sectionLength = 0;
    WordSet currentWords;
    std::list<PStringRefSection> sectionList;
};

}  // namespace

std::vector<PStringRefSection> markInput(PStringRef<unsigned short> const& input,
                                         unsigned short separator) {
    SectionMarker marker;
    unsigned short const* const text = input.text();
    for (unsigned long i = 0; i < input.length(); ++i) {
        if (isWhiteSpaceUnit(text[i])) {
            marker.addWhiteSpace();
        } else if (text[i] == separator || text[i] == 0) {
            marker.closeSection();
        } else {
            marker.addWordUnit(text + i);
        }
    }
    marker.closeSection();
    return list2vector(marker.sections());
}
