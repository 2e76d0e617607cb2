// StringSearch and what it is made of.
#include <locale>

#include "search/mark_input.h"
#include "search/word_sets.h"
#include "tests/test_support.h"

namespace {

using stand_in_host::Component;
using stand_in_host::SearchArguments;

constexpr std::u16string_view kBad = u"Input parameters error";
constexpr std::u16string_view kLong = u"String length must be no longer 1000 characters";
constexpr std::u16string_view kInternal = u"Internal error. Try to rerun";

TEST(WordOrder, ComparesUnitsUpToANul) {
    struct {
        char16_t const *first, *second;
        unsigned long limit;
        int result;
    } const cases[] = {{u"abc", u"abd", 3, -1}, {u"abd", u"abc", 3, 1}, {u"abc", u"abd", 2, 0},
                       {u"Abc", u"abc", 3, -1}, {u"ab", u"abc", 3, 0},  {u"", u"abc", 3, 0},
                       {u"abc", u"", 3, 0},     {u"abc", u"abd", 0, 0}, {u"\xFFFF", u"a", 1, 1}};
    for (auto const& [first, second, limit, result] : cases) {
        EXPECT_EQ(wcstrncmp_nocase(stand_in_host::hostUnits(first),
                                   stand_in_host::hostUnits(second), limit),
                  result);
    }
    PStringRef<unsigned short> const none;
    EXPECT_FALSE(none < PStringRef<unsigned short>(nullptr, 5) ||
                 PStringRef<unsigned short>(nullptr, 5) < none);
}

// Each section as (start, length) with its words, in set order, as index/ordinal.
std::string marked(std::u16string_view text, unsigned short separator) {
    auto const* const start = stand_in_host::hostUnits(text.data());
    std::string out;
    for (auto const& section : markInput({start, text.size()}, separator)) {
        auto const& reference = section.reference();
        out += "(" + std::to_string(reference.text() - start) + "," +
               std::to_string(reference.length()) + ")";
        EXPECT_EQ(reference.ordinal(), -1);
        for (auto const& word : section.words()) {
            out += " " + std::to_string(word.text() - start) + "/" + std::to_string(word.ordinal());
        }
        out += ";";
    }
    return out;
}

TEST(MarkInput, CutsSectionsAndWords) {
    struct {
        std::u16string_view text;
        unsigned short separator;
        char const* sections;
    } const cases[] = {
        {u"  one  two  ", ',', "(2,12) 2/0 7/1;"},
        {u"one\ttwo\r\nthree", ',', "(0,14) 0/0 4/1 9/2;"},
        {u"red red blue red green", ',', "(0,22) 0/0 8/2 17/4;"},
        {u"b aa c", ',', "(0,6) 0/0 5/2 2/1;"},
        {u"aa b aa,b aa", ',', "(0,7) 3/1 0/0;(8,5) 8/0 10/1;"},
        {u" a,  b ,c", ',', "(1,2) 1/0;(5,5) 5/0;(8,2) 8/0;"},
        {u"a,,b,", ',', "(0,1) 0/0;(3,2) 3/0;"},
        {u",a", ',', "(1,2) 1/0;"},
        {u" , ,,", ',', ""},
        {u"", ',', ""},
        {u"a,b", 0, "(0,3) 0/0;"},
        {whole(u"one\0two"), 0, "(0,3) 0/0;(4,4) 4/0;"},
        {whole(u"one\0two"), ',', "(0,3) 0/0;(4,4) 4/0;"},
        {whole(u"a\0b\nc"), '\n', "(0,1) 0/0;(2,4) 2/0 4/1;"},
        {u"one two", ' ', "(0,7) 0/0 4/1;"},
        {u"a,b", 'a', "(1,3) 1/0;"},
        {u"a\vb", ',', "(0,3) 0/0;"},
    };
    for (auto const& [text, separator, sections] : cases) {
        EXPECT_EQ(marked(text, separator), sections) << stand_in_host::toUtf8(text);
    }
}

WordSet wordsOf(std::u16string_view text) {
    auto const sections = markInput({stand_in_host::hostUnits(text.data()), text.size()}, 0);
    return sections.empty() ? WordSet() : sections[0].words();
}

TEST(WordSets, CancelAndJoinInTextOrder) {
    WordSet first = wordsOf(u"a zz mmm q");
    WordSet second = wordsOf(u"mmm a r s t");
    removeSame(first, second);
    EXPECT_EQ(makeStringForComparison(first), units(u"zzq"));
    EXPECT_EQ(makeStringForComparison(second), units(u"rst"));
    removeSame(first, second);
    removeBy(second, wordsOf(u"s x"));
    EXPECT_EQ(makeStringForComparison(second), units(u"rt"));
    EXPECT_EQ(makeStringForComparison(wordsOf(u"zz a mmm")), units(u"zzammm"));
}

TEST(WordSets, AreJudgedByWhatIsLeft) {
    struct {
        std::u16string_view search, candidate, exclusions;
        unsigned long distance;
        std::u16string_view left;  // of the candidate, after the call
    } const cases[] = {{u"red big ball", u"big red ball", u"", 0, u""},
                       {u"red ball", u"red big ball", u"", 3, u"big"},
                       {u"red ball", u"red ltd ball", u"ltd", 0, u""},
                       {u"red ltd ball", u"red ball", u"ltd", 3, u""},  // cuts the candidate alone
                       {u"ab cd", u"a bcd", u"", 0, u"abcd"},
                       {u"one two three", u"three four five", u"", 7, u"fourfive"},
                       {u"Red ball", u"red ball", u"", 1, u"red"},
                       {u"", u"abc", u"", 3, u"abc"}};
    for (auto const& c : cases) {
        for (unsigned long limit = 0; limit < 10; ++limit) {
            WordSet const search = wordsOf(c.search);
            WordSet candidate = wordsOf(c.candidate);
            EXPECT_EQ(compareStrings(search, candidate, wordsOf(c.exclusions), limit),
                      c.distance <= limit)
                << stand_in_host::toUtf8(c.search) << limit;
            EXPECT_EQ(makeStringForComparison(candidate), units(c.left));
        }
    }
}

TEST(StringSearch, AnswersWorkedOutByHand) {
    constexpr int kMinusOne = -1;
    struct {
        SearchArguments in;
        char const* list;
    } const cases[] = {
        {{u"red big ball", u"big red ball;small blue cup", u';', 10, 80, 80, u""}, "0"},
        {{u"red ball", u"red big ball", u';', 100, 90, 90, u""}, ""},   // 3 left, limit 1
        {{u"red ball", u"red big ball", u';', 100, 70, 70, u""}, "0"},  // limit 4
        {{u"abcd", u"abcx;abcd", u';', 100, 100, 100, u""}, "1"},
        {{u"abcd", u"abcx;wxyz", u';', 100, 0, 0, u""}, "0,1"},
        // An index counts entries with words.
        {{u"ab", u"ab;;  ;ab;", u';', 100, 100, 100, u""}, "0,1"},
        {{u"abc", u"xyz;qrs", u';', 100, 100, 100, u""}, ""},
        // Behind a separator an entry is one unit longer, and so beyond the threshold.
        {{u"abcde", u"abcdf;abcdf", u';', 5, 100, 0, u""}, "1"},
        {{u"abcd", u"wxyz", u';', 100, 50, 50, u""}, ""},
        {{u"abcd", u"    wxyz", u';', 100, 50, 50, u""}, "0"},  // whitespace counts in the limit
        {{u"abcdefghij", u"abcdefgxyz", u';', 100, 75, 75, u""}, "0"},
        {{u"abcdefghij", u"abcdefgxyz", u';', 100, 76, 76, u""}, ""},
        {{u"ball", u"ball ball", u';', 100, 100, 100, u""}, "0"},
        {{u"a;b", u"a;b", u';', 100, 100, 100, u""}, ""},
        {{u"abcd", u"abcx", u';', 0, 100, 50, u""}, "0"},
        {{u"abcd", u"abcx;abcd", u';', kMinusOne, 100, 0, u""}, "1"},  // no entry is that long
        // Beyond 100 the long percentage demands as much as 100.
        {{u"abcd", u"abcx;abcd", u';', 0, 0, 101, u""}, "1"},
        {{u"abcd", u"abcx;abcd", u';', 0, 0, kMinusOne, u""}, "1"},
        {{u"red ball", u"red ltd ball", u';', 0, 100, 100, u"ltd"}, "0"},
        {{u"red ltd ball", u"red ball", u';', 0, 100, 100, u"ltd"}, "0"},
        {{u"abc", u"abc d;abc", u';', 0, 100, 100, u"x;d e"}, "0,1"},
        {{u"ltd", u"ltd;abc", u';', 0, 100, 100, u"ltd"}, "0"},
        {{u"ab cd", u"cd ab", u' ', 0, 100, 100, u""}, "0"},  // whitespace separates nothing
        {{whole(u" \0ab cd"), u"cd ab", u';', 0, 100, 100, u""}, "0"},
        {{whole(u"ab\0cd"), u"ab;cd", u';', 0, 100, 100, u""}, "0"},
        {{u"", u"ab", u';', 0, 0, 0, u""}, ""},
        {{u"ab", u"", u';', 0, 0, 0, u""}, ""},
        {{whole(u" \0\t"), u"ab", u';', 0, 0, 0, u""}, ""},
        {{u"ab", u"; ;", u';', 0, 0, 0, u""}, ""},
    };
    Component component(addIn());
    for (auto const& [in, list] : cases) {
        EXPECT_EQ(component.search(in), list)
            << stand_in_host::toUtf8(in.text) << " | " << stand_in_host::toUtf8(in.dictionary);
    }
    EXPECT_TRUE(component.connection.reports.empty());
}

class SearchRecords : public testing::Test {
protected:
    SearchRecords() : component(addIn()) {}

    bool call() { return component->CallAsFunc(1, &result, params, 7); }

    // Expects that nothing is written beyond the tag, if that.
    void expectFailure(std::u16string_view description, unsigned tag = 0xA5A5) {
        component.connection.reports.clear();
        result = stand_in_host::garbageRecord();
        EXPECT_FALSE(call());
        EXPECT_EQ(result.tag, tag);
        EXPECT_EQ(result.value.whole, 0xA5A5A5A5A5A5A5A5U);
        EXPECT_EQ(result.length, 0xA5A5A5A5U);
        ASSERT_EQ(component.connection.reports.size(), 1U);
        EXPECT_EQ(component.connection.reports[0].description, description);
    }

    Component component;
    std::u16string longText = std::u16string(1001, u'a');
    _tVariant params[7] = {stand_in_host::textRecord(u"ab"), stand_in_host::textRecord(u"ab;ab"),
                           stand_in_host::textRecord(u";"),  stand_in_host::numberRecord(10),
                           stand_in_host::numberRecord(100), stand_in_host::numberRecord(100),
                           stand_in_host::textRecord(u"")};
    _tVariant result = stand_in_host::garbageRecord();
};

TEST_F(SearchRecords, FaultsAreReportedInTheirOrder) {
    for (auto& record : params) {
        auto const tag = record.tag;
        for (unsigned const wrong : {0U, 11U, 25U - tag, 65535U}) {
            record.tag = static_cast<std::uint16_t>(wrong);
            expectFailure(kBad);
        }
        record.tag = tag;
    }
    auto const good = params[0];
    params[0] = stand_in_host::textRecord(longText);
    params[1].length = 0;
    expectFailure(kLong);
    for (unsigned const length : {0U, 2U}) {
        params[2].length = length;
        expectFailure(kBad);
    }
    params[2].length = 1;
    for (int const percent : {101, -1}) {
        params[4] = stand_in_host::numberRecord(percent);
        expectFailure(kBad);
    }
    params[4] = stand_in_host::numberRecord(100);
    params[0].length = 1000;
    EXPECT_TRUE(call());
    // Nothing to search for is an empty text, written out.
    EXPECT_EQ(result.tag, TagWideString);
    EXPECT_EQ(result.value.whole, 0U);
    EXPECT_EQ(result.length, 0U);
    params[0] = good;
    EXPECT_TRUE(call());
}

TEST_F(SearchRecords, WithoutABlockTheResultIsAnInternalError) {
    using Answer = stand_in_host::Memory::Answer;
    for (auto const answer : {Answer::Refusal, Answer::EmptyClaim}) {
        component.memory.answer = answer;
        expectFailure(kInternal, TagWideString);
    }
    component->setMemManager(nullptr);
    expectFailure(kInternal, TagWideString);
    component->setMemManager(static_cast<HostMemoryManager*>(&component.memory));
    component.memory.answer = Answer::Block;
    EXPECT_TRUE(call());
    EXPECT_EQ(stand_in_host::fromHost(result.value.wideString, result.length), u"0,1");
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
