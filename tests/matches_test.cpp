// What the program tells beside the add-in's answer, held against the add-in.
#include "near_text/matching/matches.h"

#include "near_text/matching/groups.h"
#include "near_text/matching/numbers.h"
#include "tests/random_text.h"

namespace {

using namespace near_text;

class RandomLists : public WithComponent {
protected:
    std::size_t below(std::size_t end) { return random.below(end); }

    // Few words over few units, so that many cancel or nearly do; blank at times.
    std::u16string line() {
        std::u16string text;
        for (std::size_t words = below(5); words > 0; --words)
            text += random.run(u"abcя12", 1 + below(random.oneIn(4) ? 12 : 3)) +
                    std::u16string(1 + below(2), u' ');
        return text;
    }

    EntryList list(bool beginsWithSeparator) {
        static near_text::Preparer const asItIs{{}};
        EntryListBuilder builder(asItIs, 0);
        if (beginsWithSeparator) builder.beginWithSeparator();
        builder.add(1, u"abc", "");
        for (std::size_t place = 2, end = 2 + below(12); place < end; ++place)
            builder.add(place, line(), "");
        return builder.take("list");
    }

    SearchTerms terms(std::u16string const& exclusions) {
        int const percent = static_cast<int>(below(101));
        return {{percent, random.oneIn(3) ? static_cast<int>(below(101)) : percent},
                static_cast<int>(below(12)),
                exclusions};
    }

    RandomText random{812};
};

TEST_F(RandomLists, NearnessIsWhereTheAddInTurns) {
    std::size_t count = 0;
    for (int round = 0; round < 3000; ++round) {
        EntryList const entries = list(round % 5 == 0);
        SearchTerms const with = terms(random.oneIn(3) ? line() : u"");
        std::u16string const text = line();
        auto const excluded = reference::readExclusions(with.exclusions, entries.separator);
        Matcher matcher(component, entries, with, excluded, {});
        auto const finds = [&](unsigned long index, int both) {
            Indices const found = matcher.search.find(text, {both, both});
            return std::binary_search(found.begin(), found.end(), index);
        };
        Indices indices;
        for (Match const& match : matcher.matches(text)) {
            ASSERT_TRUE(finds(match.index, match.percent));
            ASSERT_FALSE(match.percent < 100 && finds(match.index, match.percent + 1));
            ASSERT_LE(match.distance, match.limit);
            indices.push_back(match.index);
            ++count;
        }
        ASSERT_EQ(matcher.search.find(text, with.percentages), indices);
    }
    EXPECT_GT(count, 5000U);
}

// Whether or not a high percentage is asked for first, which depends on how texts went before.
TEST_F(RandomLists, WantedAreTheNearest) {
    for (int round = 0; round < 200; ++round) {
        EntryList const entries = list(false);
        SearchTerms const plain = terms(u"");
        SearchTerms with = plain;
        with.isSameNumbers = random.oneIn(2);
        reference::ExcludedWords const none;
        Matcher all(component, entries, plain, none, {});
        Matcher best(component, entries, with, none, {Wanted::kAll, true});
        Matcher two(component, entries, with, none, {2, false});
        for (int i = 0; i < 50; ++i) {
            std::u16string const text = line();
            std::vector<Match> matches = all.matches(text);
            std::erase_if(matches, [&](Match const& match) {
                return with.isSameNumbers &&
                       Numbers(text).contradict(Numbers(entries.units(match.index)));
            });
            sortByNearness(matches);
            auto const ties = std::count_if(matches.begin(), matches.end(), [&](Match const& m) {
                return m.percent == matches[0].percent;
            });
            auto const expectFirst = [&](std::vector<Match> const& wanted, std::size_t most) {
                ASSERT_EQ(wanted.size(), std::min(matches.size(), most));
                for (std::size_t k = 0; k < wanted.size(); ++k)
                    ASSERT_EQ(wanted[k].index, matches[k].index);
            };
            expectFirst(best.matches(text), static_cast<std::size_t>(ties));
            expectFirst(two.matches(text), 2);
        }
    }
}

TEST(Numbers, ContradictWhereEachSideHasOneOfItsOwn) {
    std::tuple<Text, Text, bool> const cases[] = {
        {u"13 mm", u"17 mm", true},
        {u"hammer 4 kg", u"hammer", false},
        {u"M8x40", u"M8 x 50", true},
        {u"8 x 40", u"40x8x8", false},
        {u"1.5 l", u"1,5 l", false},
        {u"1.5 l", u"15 l", true},
        {u"007", u"7", false},
        {u"0", u"000", false},
        {u"0", u"5", true},
        {u"10", u"1", true},
        {u"4 kg 2 m", u"4 kg 3", true},
        {u"4 kg 2 m", u"2", false},
        {u"\u0663 kg", u"3 kg", false},
        {u"\u0663\u0660", u"31", true},
        {u"\U0001D7D9", u"1", false},
        {u"x\u00B2", u"x3", false},
        {u"", u"1", false},
    };
    for (auto const& [text, entry, isContradiction] : cases) {
        EXPECT_EQ(Numbers(text).contradict(Numbers(entry)), isContradiction) << shown(text);
        EXPECT_EQ(Numbers(entry).contradict(Numbers(text)), isContradiction) << shown(text);
    }
}

TEST(Groups, AreJoinedByChains) {
    Groups groups(9);
    for (auto const& [first, second] : {std::pair(7, 8), {2, 3}, {8, 3}, {5, 0}, {2, 7}})
        groups.join(static_cast<std::size_t>(first), static_cast<std::size_t>(second));
    EXPECT_EQ(groups.joined(), (std::vector<std::vector<std::size_t>>{{0, 5}, {2, 3, 7, 8}}));
}

}  // namespace
