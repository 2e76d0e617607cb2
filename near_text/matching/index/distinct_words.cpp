#include "near_text/matching/index/distinct_words.h"

#include <algorithm>

#include "reference/whitespace.h"

namespace near_text {

namespace {

// Any order serves; the lengths settle most comparisons.
bool isBefore(std::u16string_view a, std::u16string_view b) {
    return a.size() != b.size() ? a.size() < b.size() : a < b;
}

}  // namespace

void distinctWords(std::u16string_view text, reference::ExcludedWords const& excluded,
                   std::vector<std::u16string_view>& words) {
    words.clear();
    for (auto at = text.begin(); at != text.end();) {
        auto const begin = std::find_if_not(at, text.end(), reference::isWhitespace);
        at = std::find_if(begin, text.end(), reference::isWhitespace);
        if (begin != at) words.emplace_back(begin, at);
    }
    std::sort(words.begin(), words.end(), isBefore);
    words.erase(std::unique(words.begin(), words.end()), words.end());
    if (excluded.empty()) return;
    std::erase_if(words, [&](std::u16string_view word) { return excluded.count(word) > 0; });
}

}  // namespace near_text
