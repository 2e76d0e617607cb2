// Random input against the plain computation of the same answers, which shares no code with the
// add-in. Seeds are fixed. A percentage is tried close to where the answer turns: there the limit
// lies one below the distance, at it and one above.
#include "reference/explanation.h"
#include "tests/random_text.h"
#include "tests/test_support.h"

namespace {

using AsThePlainComputation = WithComponent;

TEST_F(AsThePlainComputation, RandomPairsCompare) {
    RandomText random(20250);
    for (int round = 0; round < roundsOf(4000); ++round) {
        if (round % 50 == 0) random.stock.clear();
        auto const [first, second] = RandomPair(
            random, random.oneIn(20) ? 150 : 1 + random.below(8), random.oneIn(3) ? 2 : 6);
        for (int const percent : turningPercents(reference::explainCompare(first, second, 0))) {
            auto const plain =
                reference::explainCompare(first, second, static_cast<unsigned long>(percent));
            ASSERT_EQ(component.compare(first, second, percent), plain.isAlike)
                << shown(first) << shown(second) << percent;
        }
    }
}

std::string plainList(SearchArguments const& arguments) {
    std::string list;
    auto const entries = reference::explainSearch(arguments);
    for (std::size_t index = 0; index < entries.size(); ++index) {
        if (entries[index].isAlike) list += (list.empty() ? "" : ",") + std::to_string(index);
    }
    return list;
}

TEST_F(AsThePlainComputation, RandomSearchesAnswer) {
    RandomText random(4711);
    for (int round = 0; round < roundsOf(4000); ++round) {
        if (round % 20 == 0) random.stock.clear();
        RandomSearch const search(random, 30);
        SearchArguments arguments = search.arguments();
        auto const plain = reference::explainSearch(arguments);
        if (plain.empty()) continue;
        for (int const percent : turningPercents(plain[random.below(plain.size())])) {
            arguments.percentShort = percent;
            arguments.percentLong =
                random.oneIn(3) ? static_cast<int>(random.below(130)) - 10 : percent;
            ASSERT_EQ(component.search(arguments), plainList(arguments))
                << shown(search.text) << shown(search.dictionary) << shown(search.exclusions)
                << shown({&search.separator, 1}) << search.threshold << " " << percent << " "
                << arguments.percentLong;
        }
    }
}

// A list long enough to learn from, where no edit is allowed.
TEST_F(AsThePlainComputation, LongListsAreSearchedForTheSameWords) {
    RandomText random(100);
    for (int round = 0; round < roundsOf(60); ++round) {
        random.stock.clear();
        std::u16string list;
        RandomSearch search(random, 30);
        while (list.size() < 17000)
            list += RandomSearch(random, 30).dictionary + search.separator;
        search.dictionary = list + search.text;
        SearchArguments arguments = search.arguments();
        arguments.percentShort = arguments.percentLong = 100;
        ASSERT_EQ(component.search(arguments), plainList(arguments))
            << shown(search.text) << shown(search.exclusions) << shown({&search.separator, 1});
    }
}

}  // namespace
