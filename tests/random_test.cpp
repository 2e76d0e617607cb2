// Random input against the plain computation of the same answers, which shares no code with the
// add-in. Seeds are fixed. A percentage is tried close to where the answer turns: there the limit
// lies one below the distance, at it and one above.
#include "compare/generalized_levenstein_distance.h"
#include "stand_in_host/explanation.h"
#include "tests/random_text.h"
#include "tests/test_support.h"

namespace {

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
        if (round % 20 == 0) random.stock.clear();
        RandomSearch const search(random, 30);
        SearchArguments arguments = search.arguments();
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
