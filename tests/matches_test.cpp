// What the program tells beside the add-in's answer, held against the add-in.
#include "near_text/matches.h"

#include <random>

#include "near_text/groups.h"
#include "near_text/high_first.h"
#include "tests/test_support.h"

namespace {

using namespace near_text;

class RandomLists : public WithComponent {
protected:
    std::size_t below(std::size_t end) {
        return std::uniform_int_distribution<std::size_t>(0, end - 1)(engine);
    }

    // Few words over few units, so that many cancel or nearly do; blank at times.
    std::u16string line() {
        std::u16string text;
        for (std::size_t words = below(5); words > 0; --words) {
            for (std::size_t length = 1 + below(below(4) == 0 ? 12 : 3); length > 0; --length)
                text += u"abcя"[below(4)];
            text.append(1 + below(2), u' ');
        }
        return text;
    }

    EntryList list(bool beginsWithSeparator) {
        EntryListBuilder builder({}, 0);
        if (beginsWithSeparator) builder.beginWithSeparator();
        builder.add(1, u"abc", "abc");
        std::size_t const count = 2 + below(12);
        for (std::size_t place = 2; place < count; ++place)
            builder.add(place, line(), "");
        return builder.take("list");
    }

    std::mt19937 engine{812};
};

TEST_F(RandomLists, NearnessIsWhereTheAddInTurns) {
    std::size_t count = 0;
    for (int round = 0; round < 3000; ++round) {
        EntryList const entries = list(round % 5 == 0);
        int const percent = static_cast<int>(below(101));
        int const other = below(3) == 0 ? static_cast<int>(below(101)) : percent;
        SearchTerms const terms = {
            {percent, other}, static_cast<int>(below(12)), below(3) == 0 ? line() : u""};
        std::u16string const text = line();
        Matcher matcher(component, entries, terms, {});
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
        ASSERT_EQ(matcher.search.find(text, terms.percentages), indices);
    }
    EXPECT_GT(count, 5000U);
}

// Whether or not a high percentage is asked for first, which depends on how texts went before.
TEST_F(RandomLists, WantedAreTheNearest) {
    for (int round = 0; round < 200; ++round) {
        EntryList const entries = list(false);
        SearchTerms const terms = {{static_cast<int>(below(101)), static_cast<int>(below(101))},
                                   static_cast<int>(below(12)),
                                   u""};
        Matcher all(component, entries, terms, {});
        Matcher best(component, entries, terms, {Wanted::kAll, true});
        Matcher two(component, entries, terms, {2, false});
        for (int i = 0; i < 50; ++i) {
            std::u16string const text = line();
            std::vector<Match> matches = all.matches(text);
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

// Lengths are those of the whole list, whichever entries are handed over.
TEST_F(RandomLists, FindTheSameAmongAFew) {
    for (int round = 0; round < 3000; ++round) {
        EntryList const entries = list(false);
        std::u16string const text = line();
        int const percent = static_cast<int>(below(101));
        EntrySearch search(component, entries, u"", static_cast<int>(below(12)));
        Indices among, both;
        Indices const found = search.find(text, {percent, 100 - percent});
        for (unsigned long index = 0; index < entries.entries.size(); ++index) {
            if (below(2) == 0) continue;
            among.push_back(index);
            if (std::binary_search(found.begin(), found.end(), index)) both.push_back(index);
        }
        ASSERT_EQ(search.findAmong(text, {percent, 100 - percent}, among), both);
    }
    std::u16string const tooLong(1001, u'x');
    EXPECT_THROW(EntrySearch(component, list(false), u"", 0).findAmong(tooLong, {0, 0}, {}),
                 Refused);
}

TEST(HighFirst, IsTriedAsLongAsItPays) {
    for (auto const& [everyNth, tries] : {std::pair(2, 1000), {100, 62}}) {
        HighFirst high;
        int tried = 0;
        for (int text = 0; text < 1000; ++text) {
            bool const isEnough = text % everyNth == 1;
            bool const isDue = high.isDue();
            if (isDue) high.tried(0.2, isEnough);
            if (!isDue || !isEnough) high.searchedFully(1);
            tried += isDue ? 1 : 0;
        }
        EXPECT_EQ(tried, tries);
    }
}

TEST(Groups, AreJoinedByChains) {
    Groups groups(9);
    for (auto const& [first, second] : {std::pair(7, 8), {2, 3}, {8, 3}, {5, 0}, {2, 7}})
        groups.join(static_cast<std::size_t>(first), static_cast<std::size_t>(second));
    EXPECT_EQ(groups.joined(), (std::vector<std::vector<std::size_t>>{{0, 5}, {2, 3, 7, 8}}));
}

}  // namespace
