// StringCompare and what it is made of.
#include "compare/damerau_levenshtein_distance.h"
#include "compare/generalized_levenstein_distance.h"
#include "tests/test_support.h"

namespace {

using stand_in_host::Component;
using Words = std::vector<Utf16String>;

class StringCompare : public testing::Test {
protected:
    StringCompare() : component(addIn()) {}

    // Carries out method 0 on raw records; the result record holds garbage that must stay.
    std::u16string reportOf(_tVariant first, _tVariant second, _tVariant percent) {
        _tVariant params[] = {first, second, percent};
        _tVariant result = stand_in_host::garbageRecord();
        component.connection.reports.clear();
        EXPECT_FALSE(component->CallAsFunc(0, &result, params, 3));
        EXPECT_EQ(result.tag, 0xA5A5);
        EXPECT_EQ(result.value.boolean, 0xA5);
        if (component.connection.reports.size() != 1) return u"not one report";
        return component.connection.reports.front().description;
    }

    Component component;
};

TEST_F(StringCompare, AnswersWorkedOutByHand) {
    struct {
        std::u16string_view first, second;
        int percent;
        bool isAlike;
    } const cases[] = {
        {u"alpha beta", u"beta alpha", 100, true},
        {u"a  b", u"a b", 100, true},
        {u"  ab  ", u"ab", 100, true},
        {u"a\t\r\n b", u"b a", 100, true},
        {u"a\u00A0b", u"b a", 66, false},  // one word of three: distance 3, limit 1
        // Repeats cancel one for one; the first ones without a partner are what is left.
        {u"a a a b", u"a c", 50, true},   // aab, c: distance 3, limit 4
        {u"a a a b", u"a c", 60, true},   // limit 3
        {u"a a a b", u"a c", 70, false},  // limit 2
        {u"a b a", u"a", 100, false},
        {u"x a y a", u"a", 50, true},  // xay: distance 3, limit 4
        // What is left is joined without gaps.
        {u"ab c", u"a bc", 100, true},
        {u"a b", u"ab", 100, true},
        {u"", u"", 100, true},
        {u"   ", u"", 100, true},
        {u"abc", u"", 0, true},
        {u"abc", u"", 16, true},  // 2.52 rounds up
        {u"abc", u"", 17, false},
        // The last bit of the product decides: 0.4999999999999999 and 1.4999999999999996 go down.
        {u"abcde", u"abcdx", 89, true},
        {u"abcde", u"abcdx", 90, false},
        {u"abcdefghijklmno", u"abcdefghijklmxy", 90, false},
        {u"abcdefghijklmno", u"abcdefghijklmnx", 90, true},
        {u" abcde", u"abcdx", 90, true},   // a leading space counts once
        {u"ab  cd", u"abxcd", 90, false},  // a double one no more than a single
        {u"ab", u"ac", 75, true},          // 0.5 goes up
        {u"ab", u"ba", 25, true},          // changed places: two edits
        {u"ab", u"ba", 26, false},
        {u"Abc", u"abc", 100, false},
        {u"the quick brown fox", u"the quick brown cat", 86, true},
        {u"the quick brown fox", u"the quick brown cat", 87, false},
        // A NUL ends the words, yet the whole length counts: 5 and 9 units.
        {whole(u"ab\0cd"), u"ab", 100, true},
        {whole(u"ab\0cdefgh"), u"xy", 78, true},
        {whole(u"ab\0cdefgh"), u"xy", 84, false},
        {whole(u"ab \0   "), u"ab", 100, true},
        // Half of a surrogate pair is a unit like any other.
        {u"\U0001F340", u"\U0001F341", 50, true},
    };
    for (auto const& c : cases) {
        for (auto const& [a, b] : {std::pair{c.first, c.second}, {c.second, c.first}}) {
            EXPECT_EQ(component.compare(a, b, c.percent), c.isAlike)
                << stand_in_host::toUtf8(a) << " | " << stand_in_host::toUtf8(b) << " "
                << c.percent;
        }
    }
    EXPECT_TRUE(component.connection.reports.empty());
}

TEST_F(StringCompare, FaultsAreReportedInTheirOrder) {
    auto const text = stand_in_host::textRecord(u"a");
    auto const percent = stand_in_host::numberRecord(100);
    std::u16string const longText(1001, u'a');
    auto const tooLong = stand_in_host::textRecord(longText);
    auto const atLimit = stand_in_host::textRecord({longText.data(), 1000});
    auto fraction = percent;
    fraction.tag = 5;
    auto const kBad = u"Input parameters error";
    auto const kLong = u"String length must be no longer 1000 characters";
    EXPECT_EQ(reportOf(percent, text, percent), kBad);
    EXPECT_EQ(reportOf(text, percent, percent), kBad);
    EXPECT_EQ(reportOf(text, text, text), kBad);
    EXPECT_EQ(reportOf(text, text, fraction), kBad);
    EXPECT_EQ(reportOf(text, text, stand_in_host::numberRecord(101)), kBad);
    EXPECT_EQ(reportOf(text, text, stand_in_host::numberRecord(-1)), kBad);
    EXPECT_EQ(reportOf(tooLong, text, stand_in_host::numberRecord(101)), kBad);
    EXPECT_EQ(reportOf(tooLong, atLimit, percent), kLong);
    EXPECT_EQ(reportOf(atLimit, tooLong, percent), kLong);
    EXPECT_EQ(component.compare({longText.data(), 1000}, {longText.data() + 1, 1000}, 100), true);
}

TEST_F(StringCompare, CallsThatAreNoCallsAreSilent) {
    _tVariant params[7] = {stand_in_host::textRecord(u"a"), stand_in_host::textRecord(u"a"),
                           stand_in_host::numberRecord(0)};
    _tVariant result = stand_in_host::garbageRecord();
    EXPECT_FALSE(component->CallAsFunc(0, &result, nullptr, 3));
    EXPECT_FALSE(component->CallAsFunc(0, &result, params, 0));
    EXPECT_FALSE(component->CallAsFunc(0, nullptr, params, 3));
    for (long const method : {-1L, 2L, 1L << 32}) {
        EXPECT_FALSE(component->CallAsFunc(method, &result, params, 3));
    }
    EXPECT_EQ(result.tag, 0xA5A5);
    EXPECT_TRUE(component.connection.reports.empty());
    EXPECT_TRUE(component->CallAsFunc(0, &result, params, 1));  // the count says no more than that
    component->Done();
    EXPECT_FALSE(component->Init(nullptr));
    EXPECT_EQ(component.compare(u"a", u"b", 101), std::nullopt);
    EXPECT_TRUE(component.connection.reports.empty());
}

TEST(SpaceSplit, CountsWhitespaceBeyondTheFirstOfEachRun) {
    auto const distance = std::make_unique<DamerauLevenshteinDistance>();
    struct {
        std::u16string_view text;
        unsigned long surplus;
        Words words;
    } const cases[] = {{u"", 0, {}},
                       {u" ", 0, {}},
                       {u"   ", 2, {}},
                       {u" a  b   c ", 3, {units(u"a"), units(u"b"), units(u"c")}},
                       {u"\t\r\n ", 3, {}},
                       {u"a\r\nb", 1, {units(u"a"), units(u"b")}},
                       {u"a\v\fb", 0, {units(u"a\v\fb")}},
                       {whole(u"a  \0  b"), 1, {units(u"a")}}};
    for (auto const& c : cases) {
        Words words;
        EXPECT_EQ(distance->spaceSplit(units(c.text).data(), c.text.size(), words), c.surplus);
        EXPECT_EQ(words, c.words);
    }
}

TEST(Exclusions, LeaveTheDistanceAndNotTheLimit) {
    auto const distance = std::make_unique<DamerauLevenshteinDistance>();
    Utf16String const first = units(u"red red blue");
    Utf16String const second = units(u"red green");
    for (auto const& [exclusions, isAlike] :
         {std::pair<Words, bool>{{}, false}, {{units(u"red")}, true}}) {
        EXPECT_EQ(distance->wordInsansitiveCompareStrings(first.data(), first.size(), second.data(),
                                                          second.size(), 55, exclusions),
                  isAlike);
        std::vector<unsigned long> found;
        distance->serchDuplicates(found, first.data(), first.size(), {second, units(u"blue")}, 0,
                                  55, 55, exclusions);
        EXPECT_EQ(found.size(), isAlike ? 2U : 0U);
    }
    // A percentage above 100 demands as much as 100.
    for (unsigned long const percent : {100UL, 101UL, ~0UL}) {
        EXPECT_FALSE(distance->wordInsansitiveCompareStrings(first.data(), 12, first.data(), 3,
                                                             percent, {}));
        EXPECT_TRUE(distance->wordInsansitiveCompareStrings(first.data(), 3, first.data() + 4, 3,
                                                            percent, {}));
    }
}

TEST(WeightedDistance, PricesEachKindOfEdit) {
    struct {
        std::u16string_view first, second;
        std::size_t insert, remove, replace, distance;
    } const cases[] = {{u"", u"abc", 2, 3, 5, 6},        {u"abc", u"", 2, 3, 5, 9},
                       {u"ab", u"abcd", 2, 3, 5, 4},     {u"abcd", u"ab", 2, 3, 5, 6},
                       {u"abc", u"abd", 2, 3, 5, 5},     {u"abc", u"abd", 2, 3, 1, 1},
                       {u"xabc", u"abcy", 2, 3, 100, 5}, {u"saturday", u"sunday", 1, 1, 1, 3}};
    for (auto const& c : cases) {
        EXPECT_EQ(GeneralizedLevensteinDistance(units(c.first), units(c.second), c.insert, c.remove,
                                                c.replace),
                  c.distance);
    }
}

TEST(TableDistance, AnswersWorkedOutByHand) {
    struct {
        std::u16string_view first;
        unsigned long firstSize;
        std::u16string_view second;
        unsigned long secondSize, percent;
        bool isAlike;
    } const cases[] = {
        {u"ab", 2, u"ba", 2, 50, true},
        {u"ab", 2, u"ba", 2, 51, false},
        {u"ca", 2, u"abc", 3, 0, true},  // a transposed pair is not edited again: 3
        {u"ca", 2, u"abc", 3, 20, false},
        {u"abcdefghij", 10, u"abcdefghix", 10, 90, true},  // 0.9999999999999998 and a hair
        {u"abcdefghij", 10, u"abcdefghix", 10, 91, false},
        {u"abcd", 100, u"abxy", 100, 98, true},  // the sizes set the limit
        {u"abcd", 4, u"abxy", 4, 98, false},
        {u"", 5, u"", 5, 200, true},
        {u"", 0, u"abc", 3, 0, true},
        {u"", 0, u"abc", 3, 1, false},
        {u"abc", 3, u"", 0, 0, true},
        {u"abc", 3, u"abc", 3, 100, true},
        {u"abc", 3, u"abc", 3, 101, false},
        {u"a", 0, u"b", 0, 0, false},
        {u"abcdef", 6, u"uvwxyz", 6, 90, false},
    };
    auto const distance = std::make_unique<DamerauLevenshteinDistance>();
    auto const answer = [&](auto const& a, unsigned long aSize, auto const& b, unsigned long bSize,
                            unsigned long percent) {
        return distance->compareStrings(a.data(), a.size(), aSize, b.data(), b.size(), bSize,
                                        percent);
    };
    for (auto const& c : cases) {
        EXPECT_EQ(answer(units(c.first), c.firstSize, units(c.second), c.secondSize, c.percent),
                  c.isAlike);
    }
    Utf16String const full(1000, 'a');
    Utf16String const over(1001, 'a');
    EXPECT_TRUE(answer(full, 1000, full, 1000, 100));
    EXPECT_FALSE(answer(over, 1001, full, 1000, 0));
    EXPECT_FALSE(answer(full, 1000, over, 1001, 0));
}

}  // namespace
