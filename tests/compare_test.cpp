// StringCompare and what it is made of.
#include "compare/damerau_levenshtein_distance.h"
#include "compare/generalized_levenstein_distance.h"
#include "tests/test_support.h"

using namespace comparer;

namespace {

using Words = std::vector<Utf16String>;

class StringCompare : public WithComponent {};

// Each pair with the highest percentage at which it is alike.
//
// A double space, or a leading one, counts once. Repeats cancel one for one, and the first ones
// without a partner are what is left: aab and c, then xay. That is joined without gaps. Halves go
// up, and the last bit of the product decides what is one: 90 percent leave 0.4999999999999999 of
// 5 units. A NUL ends the words, yet the whole length counts. Half of a surrogate pair is a unit.
TEST_F(StringCompare, AnswersWorkedOutByHand) {
    std::tuple<Text, Text, int> const cases[] = {{u"a\t\r\n b", u" b  a ", 100},
                                                 {u"a\u00A0b", u"b a", 16},
                                                 {u"Abc", u"abc", 83},
                                                 {u"ab c", u"a bc", 100},
                                                 {u"ab", u"ba", 25},
                                                 {u"ab  cd", u"abxcd", 89},
                                                 {u" abcde", u"abcdx", 91},
                                                 {u"a a a b", u"a c", 64},
                                                 {u"x a y a", u"a", 64},
                                                 {whole(u"ab \0 cd"), u"ab", 100},
                                                 {whole(u"ab\0cdefgh"), u"xy", 83},
                                                 {u"🍀", u"🍁", 75}};
    for (auto const& [first, second, percent] : cases) {
        for (int const tried : {percent, std::min(percent + 1, 100)}) {
            for (auto const& [a, b] : {std::pair{first, second}, {second, first}}) {
                EXPECT_EQ(component.compare(a, b, tried), tried <= percent)
                    << near_text::toUtf8(a) << " | " << near_text::toUtf8(b) << tried;
            }
        }
    }
    EXPECT_TRUE(component.connection.reports.empty());
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
    // An entry as long as the threshold is short.
    std::vector<unsigned long> ofShort;
    distance->serchDuplicates(ofShort, first.data(), 3, {units(u"rex"), units(u"redx")}, 3, 0, 100,
                              {});
    EXPECT_EQ(ofShort, std::vector<unsigned long>{0});
    // A percentage above 100 demands as much as 100.
    EXPECT_FALSE(
        distance->wordInsansitiveCompareStrings(first.data(), 12, first.data(), 3, ~0UL, {}));
    EXPECT_TRUE(
        distance->wordInsansitiveCompareStrings(first.data(), 3, first.data() + 4, 3, ~0UL, {}));
    Words words;
    EXPECT_EQ(distance->spaceSplit(units(u" a\r\n b\v").data(), 7, words), 2U);
    EXPECT_EQ(words, (Words{units(u"a"), units(u"b\v")}));
    Utf16String white;
    for (unsigned short unit = 0xFFFF; unit != 0; --unit) {
        if (distance->isWhiteSpace(unit)) white += unit;
    }
    EXPECT_EQ(white, units(u" \r\n\t"));
}

TEST(WeightedDistance, PricesEachKindOfEdit) {
    std::tuple<Text, Text, std::size_t, std::size_t, std::size_t, std::size_t> const cases[] = {
        {u"", u"abc", 2, 3, 5, 6},        {u"abc", u"", 2, 3, 5, 9},
        {u"abc", u"abd", 2, 3, 6, 5},     {u"abc", u"abd", 2, 3, 1, 1},
        {u"xabc", u"abcy", 2, 3, 100, 5}, {u"saturday", u"sunday", 1, 1, 1, 3}};
    for (auto const& [a, b, insert, remove, replace, distance] : cases) {
        EXPECT_EQ(GeneralizedLevensteinDistance(units(a), units(b), insert, remove, replace),
                  distance);
    }
}

// Each pair with the highest percentage at which it is within the table's limit. Neighbours that
// changed places cost one edit, and are not edited again. The size sets the limit, and a hair above
// it counts: 90 percent leave 0.9999999999999998 of 10 units.
TEST(TableDistance, AnswersWorkedOutByHand) {
    auto const distance = std::make_unique<DamerauLevenshteinDistance>();
    auto const answer = [&](Utf16String const& a, Utf16String const& b, unsigned long size,
                            unsigned long percent) {
        return distance->compareStrings(a.data(), a.size(), size, b.data(), b.size(), 0, percent) &&
               distance->compareStrings(b.data(), b.size(), 0, a.data(), a.size(), size, percent);
    };
    std::tuple<Text, Text, unsigned long, unsigned long> const cases[] = {
        {u"ab", u"ba", 2, 50},     {u"ca", u"abc", 3, 0},    {u"abcd", u"abxy", 100, 98},
        {u"", u"abc", 3, 0},       {u"abc", u"abc", 3, 100}, {u"abcdefghij", u"abcdefghix", 10, 90},
        {u"xabc", u"abc", 10, 90}, {u"abcx", u"abc", 10, 90}};
    for (auto const& [first, second, size, percent] : cases) {
        EXPECT_TRUE(answer(units(first), units(second), size, percent));
        EXPECT_FALSE(answer(units(first), units(second), size, percent + 1));
    }
    EXPECT_TRUE(answer({}, {}, 5, 200));
    EXPECT_FALSE(answer(units(u"a"), units(u"b"), 0, 0));
    Utf16String const full(1000, 'a');
    EXPECT_TRUE(answer(full, full, 1000, 100));
    EXPECT_FALSE(distance->compareStrings(full.data(), 1001, 1001, full.data(), 1000, 1000, 0));
    EXPECT_FALSE(distance->compareStrings(full.data(), 1000, 1000, full.data(), 1001, 1001, 0));
}

}  // namespace
