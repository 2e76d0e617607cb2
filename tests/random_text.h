// Texts and searches at random, with whatever the add-in tells apart.
#pragma once

#include <algorithm>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "compare/word_list.h"
#include "reference/explanation.h"
#include "tests/test_support.h"

// Latin and Cyrillic, tiny and large; units with the same low bits; halves of surrogate pairs, and
// what looks like a space to some.
inline constexpr std::u16string_view kAlphabets[] = {
    u"ab", u"abcdefghijklmnopqrstuvwxyz", u"абвгдежзийклмнопрстуфхцчшщъыьэюя",
    u"a\u00E1\u0161\u0461\u0861\uFF61", u"aé\u00A0\u0431\u2603\xD83D\xDE00\uFFA0\xFFFF;,"};

// Texts in which words repeat, cancel and nearly cancel.
struct RandomText {
    explicit RandomText(unsigned seed) : engine(seed) {}

    // From 0 to below `end`.
    std::size_t below(std::size_t end) {
        return std::uniform_int_distribution<std::size_t>(0, end - 1)(engine);
    }
    bool oneIn(std::size_t n) { return below(n) == 0; }
    char16_t oneOf(std::u16string_view units) { return units[below(units.size())]; }

    std::u16string run(std::u16string_view alphabet, std::size_t length) {
        std::u16string text;
        while (text.size() < length)
            text += oneOf(alphabet);
        return text;
    }

    // Up to `edits` units changed, taken out, put in or exchanged with another.
    std::u16string edited(std::u16string text, std::u16string_view alphabet, std::size_t edits) {
        for (std::size_t i = below(edits + 1); i > 0 && !text.empty(); --i) {
            std::size_t const at = below(text.size());
            std::size_t const kind = below(4);
            if (kind == 0) text[at] = oneOf(alphabet);
            if (kind == 1) text.erase(at, 1);
            if (kind == 2) text.insert(at, 1, oneOf(alphabet));
            if (kind == 3) std::swap(text[at], text[below(text.size())]);
        }
        return text;
    }

    // Words from a stock that grows as it goes, so that later texts share words with earlier ones,
    // with all four kinds of whitespace and, now and then, a unit of `others`.
    std::u16string words(std::size_t count, std::u16string_view alphabet, std::size_t longest,
                         std::u16string_view others) {
        std::u16string text;
        for (std::size_t i = 0; i < count; ++i) {
            if (stock.empty() || oneIn(4)) stock.push_back(run(alphabet, 1 + below(longest)));
            std::u16string const& word = stock[below(stock.size())];
            text += oneIn(5) ? edited(word, alphabet, 2) : word;
            text += oneOf(u"   \t\n\r");
            if (oneIn(4)) text += oneOf(u"   \t\n\r");
            if (!others.empty() && oneIn(6)) text += oneOf(others);
        }
        if (oneIn(2) && !text.empty()) text.pop_back();
        return text;
    }

    std::vector<std::u16string> stock;
    std::mt19937 engine;
};

inline std::string shown(std::u16string_view text) {
    return testing::PrintToString(std::u16string(text));
}

// The `number`th word of so many units, of 64 letters.
inline std::u16string numbered(std::size_t number, std::size_t length) {
    std::u16string word;
    for (std::size_t i = 0; i < length; ++i)
        word += static_cast<char16_t>(0x410 + (number >> 6 * i) % 64);
    return word;
}

// Words that have the same place in a table of usual size, until it takes a key of its own.
inline std::vector<std::u16string> collidingWords() {
    std::vector<std::u16string> words;
    for (std::size_t i = 0; words.size() < 140; ++i) {
        if (comparer::hashOf(units(numbered(i, 4)), comparer::HashKey()) % (1 << 13) == 77)
            words.push_back(numbered(i, 4));
    }
    return words;
}

// Percentages around the one at which the distance equals the limit.
inline std::vector<int> turningPercents(reference::SideBySide const& sides) {
    std::vector<int> percents = {0, 100};
    if (sides.length == 0) return percents;
    int const turn = 100 - static_cast<int>(100 * sides.distance / sides.length);
    for (int percent = std::max(0, turn - 2); percent <= std::min(100, turn + 2); ++percent)
        percents.push_back(percent);
    return percents;
}

// Two texts of fewer than `most` words of up to so many units, one time in two near to each other.
struct RandomPair {
    RandomPair(RandomText& random, std::size_t longest, std::size_t most) {
        auto const alphabet = kAlphabets[random.below(std::size(kAlphabets))];
        auto const others = random.oneIn(8) ? whole(u"\0") : whole(u"");
        first = random.words(random.below(most), alphabet, longest, others);
        second = random.oneIn(2) ? random.edited(first, alphabet, 6)
                                 : random.words(random.below(most), alphabet, longest, others);
    }

    std::u16string first, second;
};

// A search for a text in a list of up to `mostWords` words, and of an entry that is near to the
// text.
struct RandomSearch {
    RandomSearch(RandomText& random, std::size_t mostWords) {
        auto const alphabet = kAlphabets[random.below(std::size(kAlphabets))];
        separator = random.oneOf(whole(u";;;;, \n\0ab"));
        std::u16string others(random.oneIn(3) ? 1 : 5, separator);
        if (random.oneIn(6)) others += u'\0';
        std::size_t const longest = random.oneIn(20) ? 130 : 1 + random.below(8);
        text = random.words(1 + random.below(7), alphabet, longest,
                            random.oneIn(9) ? whole(u"\0;") : whole(u""));
        if (random.oneIn(20)) text.insert(0, 1, u'\0');
        dictionary = random.words(1 + random.below(mostWords), alphabet, longest, others);
        dictionary += separator + random.edited(text, alphabet, 5);
        exclusions = random.words(random.oneIn(2) ? random.below(4) : 0, alphabet, longest, others);
        if (random.oneIn(20)) exclusions = text;
        threshold = static_cast<int>(random.below(40)) - 2;
    }

    // At 0 percent. They refer to this object.
    SearchArguments arguments() const {
        return {text, dictionary, separator, threshold, 0, 0, exclusions};
    }

    std::u16string text, dictionary, exclusions;
    char16_t separator;
    int threshold;
};
