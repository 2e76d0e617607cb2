// Random input against the plain computation of the same answers, which shares no code with the
// add-in. Seeds are fixed. A percentage is tried close to where the answer turns: there the limit
// lies one below the distance, at it and one above.
#include "compare/generalized_levenstein_distance.h"
#include "stand_in_host/explanation.h"
#include "tests/random_text.h"
#include "tests/test_support.h"

namespace {

using stand_in_host::Component;
using stand_in_host::SearchArguments;

// Latin and Cyrillic, tiny and large; units with the same low bits; halves of surrogate pairs.
constexpr std::u16string_view kAlphabets[] = {
    u"ab", u"abcdefghijklmnopqrstuvwxyz", u"абвгдежзийклмнопрстуфхцчшщъыьэюя",
    u"a\u00E1\u0161\u0461\u0861\uFF61", u"aé\u0431\u2603\xD83D\xDE00\xFFFF;,"};

std::string shown(std::u16string_view text) {
    std::string out;
    for (char16_t const unit : text)
        out += (out.empty() ? "" : " ") + std::to_string(unit);
    return "[" + out + "]";
}

// Percentages around the one at which `distance` equals the limit of `length`.
std::vector<int> turningPercents(unsigned long distance, unsigned long length) {
    std::vector<int> percents = {0, 100};
    if (length == 0) return percents;
    int const turn = 100 - static_cast<int>(100 * distance / length);
    for (int percent = std::max(0, turn - 2); percent <= std::min(100, turn + 2); ++percent) {
        percents.push_back(percent);
    }
    return percents;
}

TEST(RandomPairs, CompareAsThePlainComputationDoes) {
    Component component(addIn());
    RandomText random(20250);
    for (int round = 0; round < 4000; ++round) {
        auto const alphabet = kAlphabets[random.below(std::size(kAlphabets))];
        if (round % 50 == 0) random.stock.clear();
        std::size_t const longest = random.oneIn(20) ? 150 : 1 + random.below(8);
        std::size_t const count = random.oneIn(3) ? 1 : random.below(6);
        auto const others = random.oneIn(8) ? std::u16string(1, u'\0') : std::u16string();
        auto first = random.words(count, alphabet, longest, others);
        auto second = random.oneIn(2) ? random.edited(first, alphabet, 6)
                                      : random.words(random.below(6), alphabet, longest, others);
        first.resize(std::min<std::size_t>(first.size(), 1000));
        second.resize(std::min<std::size_t>(second.size(), 1000));
        auto const plain = stand_in_host::explainCompare(first, second, 0);
        for (int const percent : turningPercents(plain.distance, plain.length)) {
            auto const expected =
                stand_in_host::explainCompare(first, second, static_cast<unsigned long>(percent));
            ASSERT_EQ(component.compare(first, second, percent), expected.isAlike)
                << shown(first) << shown(second) << percent;
        }
    }
}

// The list that the plain computation gives.
std::string plainList(SearchArguments const& arguments) {
    std::string list;
    auto const entries = stand_in_host::explainSearch(arguments);
    for (std::size_t index = 0; index < entries.size(); ++index) {
        if (entries[index].isAlike) list += (list.empty() ? "" : ",") + std::to_string(index);
    }
    return list;
}

void expectPlainAnswer(Component& component, SearchArguments const& arguments) {
    ASSERT_EQ(component.search(arguments), plainList(arguments))
        << shown(arguments.text) << shown(arguments.dictionary) << shown(arguments.exclusions)
        << shown({&arguments.separator, 1}) << " " << arguments.lengthThreshold << " "
        << arguments.percentShort << " " << arguments.percentLong;
}

TEST(RandomSearches, AnswerAsThePlainComputationDoes) {
    Component component(addIn());
    RandomText random(4711);
    constexpr std::u16string_view kSeparators = whole(u";;;;, \n\0ab");
    for (int round = 0; round < 4000; ++round) {
        auto const alphabet = kAlphabets[random.below(std::size(kAlphabets))];
        if (round % 20 == 0) random.stock.clear();
        char16_t const separator = random.oneOf(kSeparators);
        std::u16string others(random.oneIn(3) ? 1 : 5, separator);
        if (random.oneIn(6)) others += u'\0';
        std::size_t const longest = random.oneIn(20) ? 140 : 1 + random.below(8);
        auto text = random.words(1 + random.below(7), alphabet, longest,
                                 random.oneIn(9) ? whole(u"\0;") : whole(u""));
        text.resize(std::min<std::size_t>(text.size(), 1000));
        auto dictionary = random.words(1 + random.below(30), alphabet, longest, others);
        // An entry near to the text, so that there is something to find.
        dictionary += separator + random.edited(text, alphabet, 5);
        auto exclusions = random.oneIn(2) ? random.words(random.below(4), alphabet, longest, others)
                                          : std::u16string();
        if (random.oneIn(20)) exclusions = text;
        SearchArguments arguments{
            text, dictionary, separator, static_cast<int>(random.below(40)) - 2, 0, 0, exclusions};
        auto const plain = stand_in_host::explainSearch(arguments);
        if (plain.empty()) continue;
        auto const& turning = plain[random.below(plain.size())];
        for (int const percent : turningPercents(turning.distance, turning.length)) {
            arguments.percentShort = percent;
            arguments.percentLong =
                random.oneIn(3) ? static_cast<int>(random.below(130)) - 10 : percent;
            expectPlainAnswer(component, arguments);
        }
    }
}

// Where a bound on the whole text is tight, or would be wrong if it forgot repeats and exclusions.
TEST(TightSearches, AnswerAsThePlainComputationDoes) {
    Component component(addIn());
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
            auto const plain = stand_in_host::explainSearch(arguments).front();
            for (int const percent : turningPercents(plain.distance, plain.length)) {
                arguments.percentShort = arguments.percentLong = percent;
                expectPlainAnswer(component, arguments);
            }
        }
    }
}

TEST(Distance, IsTheSameWhateverKernelWorksItOut) {
    RandomText random(64);
    constexpr std::size_t kLengths[] = {0,  1,  2,   7,   8,   9,   31,  32,  33,  63,  64,
                                        65, 66, 127, 128, 129, 191, 192, 193, 500, 640, 1000};
    for (auto const alphabet : kAlphabets) {
        for (std::size_t const firstLength : kLengths) {
            for (std::size_t const secondLength : kLengths) {
                auto const first = random.run(alphabet, firstLength);
                auto second = random.run(alphabet, secondLength);
                if (random.oneIn(2)) second = random.edited(first, alphabet, secondLength / 4 + 1);
                Utf16String const a = units(first);
                Utf16String const b = units(second);
                // Costs of 2 keep the row, and double the value.
                ASSERT_EQ(2 * GeneralizedLevensteinDistance(a, b, 1, 1, 1),
                          GeneralizedLevensteinDistance(a, b, 2, 2, 2))
                    << shown(first) << shown(second);
            }
        }
    }
}

}  // namespace
