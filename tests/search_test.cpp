// StringSearch and what it is made of.
#include <algorithm>
#include <locale>

#include "search/index_list.h"
#include "search/mark_input.h"
#include "search/word_sets.h"
#include "tests/test_support.h"

using namespace comparer;

namespace {

TEST(WordOrder, ComparesUnitsUpToANul) {
    std::tuple<char16_t const*, char16_t const*, unsigned long, int> const cases[] = {
        {u"abc", u"abd", 3, -1}, {u"\xFFFF", u"a", 1, 1}, {u"abc", u"abd", 2, 0},
        {u"Abc", u"abc", 3, -1}, {u"ab", u"abc", 3, 0},   {u"abc", u"", 3, 0}};
    for (auto const& [first, second, limit, result] : cases)
        EXPECT_EQ(wcstrncmp_nocase(hostUnits(first), hostUnits(second), limit), result);
    EXPECT_FALSE(PStringRef<unsigned short>() < PStringRef<unsigned short>(nullptr, 5));
}

// Each section as (start, length) with its words, in set order, as index/ordinal.
std::string marked(std::u16string_view text, unsigned short separator) {
    auto const* const start = hostUnits(text.data());
    std::ostringstream out;
    for (auto const& section : markInput({start, text.size()}, separator)) {
        auto const& reference = section.reference();
        out << "(" << reference.text() - start << "," << reference.length() << ")";
        for (auto const& word : section.words())
            out << " " << word.text() - start << "/" << word.ordinal();
        out << ";";
    }
    return out.str();
}

TEST(MarkInput, CutsSectionsAndWords) {
    std::tuple<Text, unsigned short, char const*> const cases[] = {
        {u"  red\tred\r\nblue\vx a ", ',', "(2,20) 18/3 2/0 11/2;"},
        {u"aa b aa,b aa", ',', "(0,7) 3/1 0/0;(8,5) 8/0 10/1;"},
        {u", a,,  b ,c,", ',', "(2,3) 2/0;(7,5) 7/0;(10,2) 10/0;"},
        {u" , ,,", ',', ""},
        {whole(u"a,b\0two"), 0, "(0,3) 0/0;(4,4) 4/0;"},
        {whole(u"a\0b\nc"), '\n', "(0,1) 0/0;(2,4) 2/0 4/1;"}};
    for (auto const& [text, separator, sections] : cases)
        EXPECT_EQ(marked(text, separator), sections);
}

WordSet wordsOf(std::u16string_view text) {
    auto const sections = markInput({hostUnits(text.data()), text.size()}, 0);
    return sections.empty() ? WordSet() : sections[0].words();
}

// The last text is what is left of the candidate, in the order of its text.
TEST(WordSets, AreJudgedByWhatIsLeft) {
    std::tuple<Text, Text, Text, unsigned long, Text> const cases[] = {
        {u"red ltd ball", u"red ball", u"ltd", 3, u""},  // cuts the candidate alone
        {u"red ball", u"red ltd ball", u"ltd", 0, u""},
        {u"ab cd", u"a bcd", u"", 0, u"abcd"},
        {u"one two three", u"three four zz five", u"", 9, u"fourzzfive"},
        {u"", u"abc", u"", 3, u"abc"}};
    for (auto const& [search, entry, exclusions, distance, left] : cases) {
        for (unsigned long limit = 0; limit < 10; ++limit) {
            WordSet candidate = wordsOf(entry);
            EXPECT_EQ(compareStrings(wordsOf(search), candidate, wordsOf(exclusions), limit),
                      distance <= limit);
            EXPECT_EQ(makeStringForComparison(candidate), units(left));
        }
    }
}

class StringSearch : public WithComponent {};

TEST_F(StringSearch, AnswersWorkedOutByHand) {
    std::pair<SearchArguments, char const*> const cases[] = {
        {{u"red ball", u"red big ball;ball red", u';', 100, 90, 90, u""}, "1"},  // 3 left, limit 1
        {{u"red ball", u"red big ball", u';', 100, 70, 70, u""}, "0"},           // limit 4
        // An index counts entries with words.
        {{u"ab", u"ab;;  ;ab;", u';', 100, 100, 100, u""}, "0,1"},
        // Behind a separator an entry is one unit longer, and so beyond the threshold.
        {{u"abcde", u"abcdf;abcdf", u';', 5, 100, 0, u""}, "1"},
        // No entry is as long as -1 units. Beyond 100 the long percentage demands as much as 100.
        {{u"abcd", u"abcx;abcd", u';', -1, 100, 0, u""}, "1"},
        {{u"red ltd ball", u"red ball;ltd;ball red ltd", u';', 0, 100, 100, u"x;ltd"}, "0,2"},
        {{u"", u"ab", u';', 0, 0, 0, u""}, ""},
        {{whole(u" \0\t"), u"ab", u';', 0, 0, 0, u""}, ""},
        {{u"ab", u"; ;", u';', 0, 0, 0, u""}, ""}};
    for (auto const& [in, list] : cases) {
        EXPECT_EQ(component.search(in), list)
            << near_text::toUtf8(in.text) << " | " << near_text::toUtf8(in.dictionary);
    }
    EXPECT_TRUE(component.connection.reports.empty());
}

TEST(IndexList, IsMeasuredWithoutBeingWritten) {
    using Numbers = std::vector<unsigned long>;
    std::pair<Numbers, unsigned long> const cases[] = {
        {{0}, 2},
        {{0, 9, 10, 99, 100}, 2 + 2 + 3 + 3 + 4},
        {{999'999'999, 1'000'000'000}, 10 + 11},
        {{9'999'999'999'999'999'999U, 10'000'000'000'000'000'000U, ~0UL}, 20 + 21 + 21}};
    for (auto const& [numbers, size] : cases) {
        EXPECT_EQ(unitsOfList(numbers.size(),
                              [&all = numbers](unsigned long number) {
                                  return static_cast<unsigned long>(
                                      std::count_if(all.begin(), all.end(),
                                                    [number](auto one) { return one >= number; }));
                              }),
                  size);
    }
    // As many as 32 bits cannot tell the length of.
    constexpr unsigned long kMany = 442'000'000;
    EXPECT_EQ(
        unitsOfList(kMany, [](unsigned long from) { return from < kMany ? kMany - from : 0; }),
        4'308'888'890UL);
}

// The numbers are plain decimal whatever the process makes of numbers elsewhere.
TEST(IndexList, IsSizedToTheLastUnit) {
    struct Grouping : std::numpunct<wchar_t> {
        std::string do_grouping() const override { return "\1"; }
        wchar_t do_thousands_sep() const override { return L' '; }
    };
    std::locale const before = std::locale::global(std::locale(std::locale(), new Grouping));
    Component component(addIn());
    std::u16string dictionary;
    std::string expected;
    for (int index = 0; index < 1012; ++index) {
        bool const isMatch = index % 10 == 9 || index < 2;
        dictionary += isMatch ? u"ab;" : u"c;";
        if (isMatch) expected += (expected.empty() ? "" : ",") + std::to_string(index);
    }
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(component.search({u"ab", dictionary, u';', 9, 100, 100, u""}), expected);
        EXPECT_EQ(component.memory.lastSize, 2 * (expected.size() + 1));
    }
    std::locale::global(before);
}

}  // namespace
