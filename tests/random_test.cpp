// Random input against the plain computation of the same answers, which shares no code with the
// add-in. Seeds are fixed. A percentage is tried close to where the answer turns: there the limit
// lies one below the distance, at it and one above.
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

}  // namespace
