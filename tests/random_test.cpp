// Random input against the plain computation of the same answers, which shares no code with the
// add-in. Seeds are fixed. A percentage is tried close to where the answer turns: there the limit
// lies one below the distance, at it and one above.
#include <random>

#include "compare/generalized_levenstein_distance.h"
#include "stand_in_host/explanation.h"
#include "tests/test_support.h"

namespace {

// Latin and Cyrillic, tiny and large; units with the same low bits; halves of surrogate pairs.
constexpr std::u16string_view kAlphabets[] = {
    u"ab", u"abcdefghijklmnopqrstuvwxyz", u"абвгдежзийклмнопрстуфхцчшщъыьэюя",
    u"a\u00E1\u0161\u0461\u0861\uFF61", u"aé\u0431\u2603\xD83D\xDE00\xFFFF;,"};

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

std::string shown(std::u16string_view text) {
    return testing::PrintToString(std::u16string(text));
}

// Percentages around the one at which the distance equals the limit.
std::vector<int> turningPercents(stand_in_host::SideBySide const& sides) {
    std::vector<int> percents = {0, 100};
    if (sides.length == 0) return percents;
    int const turn = 100 - static_cast<int>(100 * sides.distance / sides.length);
    for (int percent = std::max(0, turn - 2); percent <= std::min(100, turn + 2); ++percent)
        percents.push_back(percent);
    return percents;
}

class AsThePlainComputation : public WithComponent {
protected:
    void expectSearch(SearchArguments const& in) {
        std::string list;
        auto const entries = stand_in_host::explainSearch(in);
        for (std::size_t index = 0; index < entries.size(); ++index) {
            if (entries[index].isAlike) list += (list.empty() ? "" : ",") + std::to_string(index);
        }
        ASSERT_EQ(component.search(in), list)
            << shown(in.text) << shown(in.dictionary) << shown(in.exclusions)
            << shown({&in.separator, 1}) << in.lengthThreshold << " " << in.percentShort << " "
            << in.percentLong;
    }
};

TEST_F(AsThePlainComputation, RandomPairsCompare) {
    RandomText random(20250);
    for (int round = 0; round < roundsOf(4000); ++round) {
        auto const alphabet = kAlphabets[random.below(std::size(kAlphabets))];
        if (round % 50 == 0) random.stock.clear();
        std::size_t const longest = random.oneIn(20) ? 150 : 1 + random.below(8);
        std::size_t const count = random.oneIn(3) ? 1 : random.below(6);
        auto const others = random.oneIn(8) ? whole(u"\0") : whole(u"");
        auto const first = random.words(count, alphabet, longest, others);
        auto const second = random.oneIn(2)
                                ? random.edited(first, alphabet, 6)
                                : random.words(random.below(6), alphabet, longest, others);
        for (int const percent : turningPercents(stand_in_host::explainCompare(first, second, 0))) {
            auto const plain =
                stand_in_host::explainCompare(first, second, static_cast<unsigned long>(percent));
            ASSERT_EQ(component.compare(first, second, percent), plain.isAlike)
                << shown(first) << shown(second) << percent;
        }
    }
}

TEST_F(AsThePlainComputation, RandomSearchesAnswer) {
    RandomText random(4711);
    for (int round = 0; round < roundsOf(4000); ++round) {
        auto const alphabet = kAlphabets[random.below(std::size(kAlphabets))];
        if (round % 20 == 0) random.stock.clear();
        char16_t const separator = random.oneOf(whole(u";;;;, \n\0ab"));
        std::u16string others(random.oneIn(3) ? 1 : 5, separator);
        if (random.oneIn(6)) others += u'\0';
        std::size_t const longest = random.oneIn(20) ? 130 : 1 + random.below(8);
        auto const text = random.words(1 + random.below(7), alphabet, longest,
                                       random.oneIn(9) ? whole(u"\0;") : whole(u""));
        auto dictionary = random.words(1 + random.below(30), alphabet, longest, others);
        // An entry near to the text, so that there is something to find.
        dictionary += separator + random.edited(text, alphabet, 5);
        auto exclusions =
            random.words(random.oneIn(2) ? random.below(4) : 0, alphabet, longest, others);
        if (random.oneIn(20)) exclusions = text;
        SearchArguments arguments{
            text, dictionary, separator, static_cast<int>(random.below(40)) - 2, 0, 0, exclusions};
        auto const plain = stand_in_host::explainSearch(arguments);
        if (plain.empty()) continue;
        for (int const percent : turningPercents(plain[random.below(plain.size())])) {
            arguments.percentShort = percent;
            arguments.percentLong =
                random.oneIn(3) ? static_cast<int>(random.below(130)) - 10 : percent;
            expectSearch(arguments);
        }
    }
}

// Where a bound on the whole text is tight, or would be wrong if it forgot repeats and exclusions.
TEST_F(AsThePlainComputation, TightSearchesAnswer) {
    std::u16string const many(5000, u'a');
    std::u16string const wide(70'000, u'\u0431');
    std::u16string const repeats = u"red red red red red red ball";
    std::pair<std::u16string, std::u16string> const cases[] = {
        {u"abcdef", u"abcxyz"},  // nothing in common in order
        {u"abcdef", u"fedcba"},  // the same units in another order
        {u"red ball", repeats},  // repeats take no part
        {repeats, u"red ball"},       {u"red blue", u"ltd ltd ltd ltd red blua"},
        {u"ltd red", u"red"},         {u"ltd", u"ltd ltd"},
        {many.substr(0, 900), many},  {u"aaab", many + u" " + many},
        {u"\u0431\u0431", wide},      {u"\u0431 \u0461 a", u"\u0431\u0431\u0431 aaa \u0461"},
        {u"a\x0C1E", u"\x0C1E\x041E"}};
    for (auto const& [text, entry] : cases) {
        for (auto const* exclusions : {u"", u"ltd", u"red ltd", u"a;ltd"}) {
            // Once as the first entry and once behind a separator, where it is one unit longer.
            auto const dictionary = entry + u";" + entry;
            SearchArguments arguments{text, dictionary, u';', 0, 0, 0, exclusions};
            for (int const percent : turningPercents(stand_in_host::explainSearch(arguments)[0])) {
                arguments.percentShort = arguments.percentLong = percent;
                expectSearch(arguments);
            }
        }
    }
}

// Costs of 2 keep the row, and double the value.
void expectRowsDistance(std::u16string const& first, std::u16string const& second) {
    Utf16String const a = units(first);
    Utf16String const b = units(second);
    ASSERT_EQ(2 * GeneralizedLevensteinDistance(a, b, 1, 1, 1),
              GeneralizedLevensteinDistance(a, b, 2, 2, 2))
        << shown(first) << shown(second);
}

TEST(Distance, IsTheSameWhateverKernelWorksItOut) {
    RandomText random(64);
    constexpr std::size_t kLengths[] = {0,   1,   2,   7,   8,   9,   31,  32,  33,  63,
                                        64,  65,  66,  127, 128, 129, 191, 192, 193, 255,
                                        256, 257, 500, 511, 513, 640, 768, 769, 1000};
    for (auto const alphabet : kAlphabets) {
        for (std::size_t const firstLength : kLengths) {
            for (std::size_t const secondLength : kLengths) {
                auto const first = random.run(alphabet, firstLength);
                auto second = random.run(alphabet, secondLength);
                if (random.oneIn(2)) second = random.edited(first, alphabet, secondLength / 4 + 1);
                expectRowsDistance(first, second);
            }
        }
    }
}

// A block put into a long text takes the way through the matrix along the edge of the band, and,
// with a unit more, just outside of it.
TEST(Distance, HoldsAlongTheEdgeOfTheBand) {
    RandomText random(8);
    for (std::size_t const length : {520U, 768U, 769U, 1000U, 1030U}) {
        auto const first = random.run(kAlphabets[1], length);
        for (std::size_t const place : {70UL, length / 2, length}) {
            for (std::size_t block = length / 7 - 6; block < length / 7 + 4; ++block) {
                auto second = first;
                second.insert(place, random.run(kAlphabets[1], block));
                expectRowsDistance(first, second);
            }
        }
    }
}

}  // namespace
