// Random input against the plain computation of the same answers, which shares no code with the
// add-in. Seeds are fixed. A percentage is tried close to where the answer turns: there the limit
// lies one below the distance, at it and one above.
#include "stand_in_host/explanation.h"
#include "tests/random_text.h"
#include "tests/test_support.h"

namespace {

// Percentages around the one at which the distance equals the limit.
std::vector<int> turningPercents(stand_in_host::SideBySide const& sides) {
    std::vector<int> percents = {0, 100};
    if (sides.length == 0) return percents;
    int const turn = 100 - static_cast<int>(100 * sides.distance / sides.length);
    for (int percent = std::max(0, turn - 2); percent <= std::min(100, turn + 2); ++percent)
        percents.push_back(percent);
    return percents;
}

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
    for (int round = 0; round < 4000; ++round) {
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
    for (int round = 0; round < 4000; ++round) {
        auto const alphabet = kAlphabets[random.below(std::size(kAlphabets))];
        if (round % 20 == 0) random.stock.clear();
        char16_t const separator = random.oneOf(whole(u";;;;, \n\0ab"));
        std::u16string others(random.oneIn(3) ? 1 : 5, separator);
        if (random.oneIn(6)) others += u'\0';
        std::size_t const longest = random.oneIn(20) ? 130 : 1 + random.below(8);
        auto const text = random.words(1 + random.below(7), alphabet, longest,
                                       random.oneIn(9) ? whole(u"\0;") : whole(u""));
        auto dictionary = random.words(1 + random.below(30), alphabet, longest, others);
        // An entry near to the text, so that there is something to find.
        dictionary += separator + random.edited(text, alphabet, 5);
        auto exclusions =
            random.words(random.oneIn(2) ? random.below(4) : 0, alphabet, longest, others);
        if (random.oneIn(20)) exclusions = text;
        SearchArguments arguments{
            text, dictionary, separator, static_cast<int>(random.below(40)) - 2, 0, 0, exclusions};
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
