#include "search/plain_search.h"

#include "search/mark_input.h"

namespace comparer {

namespace {

// The words of all sections.
WordSet wordsOf(Utf16View text, unsigned short separator) {
    WordSet words;
    for (auto const& section : markInput({text.data(), text.size()}, separator))
        words.insert(section.words().begin(), section.words().end());
    return words;
}

}  // namespace

PlainSearch::PlainSearch(Utf16View searchText, Utf16View exclusions, unsigned short separator)
    : exclusions_(wordsOf(exclusions, separator)), searchWords_(wordsOf(searchText, 0)) {
    removeBy(searchWords_, exclusions_);
}

bool PlainSearch::isMatch(Utf16View entry, unsigned long limit) const {
    auto const sections = markInput({entry.data(), entry.size()}, 0);
    WordSet candidate = sections.empty() ? WordSet() : sections.front().words();
    return compareStrings(searchWords_, candidate, exclusions_, limit);
}

}  // namespace comparer
