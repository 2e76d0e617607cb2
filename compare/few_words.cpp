#include "compare/few_words.h"

#include <algorithm>

#include "compare/words.h"

FewWords::FewWords(TextShape const& shape) {
    forEachWord(shape.text, shape.units, [this](auto const* text, unsigned long length) {
        words[size++] = {text, length};
    });
}

void FewWords::cancelSingles(FewWords& first, FewWords& second) {
    for (unsigned long i = 0; i < first.size; ++i) {
        Word& word = first.words[i];
        if (second.count(word) != 1 || first.count(word) != 1) continue;
        second.find(word).length = 0;
        word.length = 0;
    }
}

bool FewWords::sharesWordWith(FewWords const& other) const {
    return std::any_of(words.begin(), words.begin() + size, [&other](Word const& word) {
        return word.length != 0 && other.count(word) != 0;
    });
}

unsigned long FewWords::units() const {
    unsigned long sum = 0;
    for (unsigned long i = 0; i < size; ++i)
        sum += words[i].length;
    return sum;
}

Utf16String FewWords::joined() const {
    Utf16String text;
    text.reserve(units());
    for (unsigned long i = 0; i < size; ++i)
        text.append(words[i].text, words[i].length);
    return text;
}

bool FewWords::Word::operator==(Word const& other) const {
    return length == other.length && std::equal(text, text + length, other.text);
}

unsigned long FewWords::count(Word const& word) const {
    return static_cast<unsigned long>(std::count(words.begin(), words.begin() + size, word));
}

FewWords::Word& FewWords::find(Word const& word) {
    return *std::find(words.begin(), words.begin() + size, word);
}
