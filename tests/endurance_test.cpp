// Extreme calls, and calls without end.
#include <malloc.h>

#include "tests/test_support.h"

namespace {

// Bytes that this process has allocated and not freed.
std::size_t bytesInUse() {
    auto const info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

TEST(Endurance, AMillionCallsTakeNoMemory) {
    Component component(addIn());
    std::size_t atStart = 0;
    constexpr int kRounds = roundsOf(500'000);
    for (int round = 0; round < kRounds; ++round) {
        // Every search answers with numbers, and one comparison in two with a report.
        ASSERT_EQ(component.search({u"red ball", u"a;b;ball red;c;red bal", u';', 9, 80, 80, u"x"}),
                  "2,4");
        ASSERT_EQ(component.compare(u"ab", u"ba", round % 2 == 0 ? 101 : 25).has_value(),
                  round % 2 != 0);
        component.connection.reports.clear();
        if (round == kRounds / 10) atStart = bytesInUse();
    }
    EXPECT_LE(bytesInUse(), atStart + 1024);
}

class ExtremeInput : public WithComponent {};

TEST_F(ExtremeInput, IsAnsweredAsAnyOther) {
    auto const search = [&](Text text, Text dictionary, int percent) {
        return component.search({text, dictionary, u';', 0, percent, percent, u""});
    };
    std::u16string const oneWord(10'000'000, u'a');
    EXPECT_EQ(search(u"ab", oneWord, 0), "0");
    EXPECT_EQ(search(u"ab", oneWord, 1), "");  // 1 unit too many: limit 9,900,000
    std::u16string repeated;
    while (repeated.size() < 10'000'000)
        repeated += u"ball ";
    EXPECT_EQ(search(u"ball", repeated, 100), "0");
    EXPECT_EQ(search(u"ball", std::u16string(1'000'000, u';'), 0), "");
    std::u16string alike;
    for (int i = 0; i < 1'000'000; ++i)
        alike += u"ab;";
    EXPECT_TRUE(search(u"ab", alike, 100).value_or("").ends_with(",999998,999999"));
}

}  // namespace
