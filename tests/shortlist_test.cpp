// With an index or without, the answers are the same.
#include "near_text/shortlist.h"

#include "near_text/entry_search.h"
#include "tests/entry_lists.h"
#include "tests/random_text.h"

namespace {

using near_text::EntryList;
using near_text::EntrySearch;
using near_text::Indices;
using near_text::Percentages;
using near_text::Shortlist;

// Both kinds of search in one list.
class Searches {
public:
    Searches(Component& component, EntryList const& list, std::u16string_view exclusions,
             int threshold)
        : excluded(stand_in_host::readExclusions(exclusions, list.separator)),
          shortlist(list, excluded, threshold),
          whole(component, list, exclusions, threshold),
          shortened(component, list, exclusions, threshold, &shortlist) {
        for (std::size_t i = 0; i < Shortlist::kSearchesWithout; ++i)
            shortened.find(u"-", {100, 100});
    }

    void expectSame(std::u16string_view text, Percentages percentages) {
        ASSERT_EQ(answer(whole, text, percentages), answer(shortened, text, percentages))
            << shown(text) << percentages.forShort << " " << percentages.forLong;
    }

private:
    static std::pair<Indices, std::string> answer(EntrySearch& search, std::u16string_view text,
                                                  Percentages percentages) {
        try {
            return {search.find(text, percentages), {}};
        } catch (near_text::Refused const& error) {
            return {{}, error.what()};
        }
    }

    stand_in_host::ExcludedWords const excluded;
    Shortlist shortlist;
    EntrySearch whole, shortened;
};

using SearchWithIndex = WithComponent;

TEST_F(SearchWithIndex, AnswersAsWithoutInRandomLists) {
    RandomText random(2026);
    for (int round = 0; round < 2000; ++round) {
        if (round % 20 == 0) random.stock.clear();
        RandomSearch const search(random, random.oneIn(20) ? 1000 : 50);
        auto const plain = stand_in_host::explainSearch(search.arguments());
        if (plain.empty()) continue;
        EntryList const list = listOf(search.dictionary, search.separator);
        Searches searches(component, list, search.exclusions, search.threshold);
        for (int const percent : turningPercents(plain[random.below(plain.size())])) {
            Percentages const percentages = {
                percent, random.oneIn(3) ? static_cast<int>(random.below(101)) : percent};
            for (std::u16string_view const text :
                 {std::u16string_view(search.text), list.units(list.entries.size() - 1)})
                searches.expectSame(text, percentages);
        }
        searches.expectSame(std::u16string(1001, u'a'), {0, 0});
        searches.expectSame(u" ", {0, 0});
    }
}

TEST_F(SearchWithIndex, AnswersAsWithoutAtEveryPercentage) {
    auto const read = [](std::string const& name) {
        std::u16string lines =
            stand_in_host::toUnits(contentOf(NEAR_TEXT_SAMPLES "/" + name + ".txt"));
        std::replace(lines.begin(), lines.end(), u'\n', u'\0');
        return lines;
    };
    EntryList const list = listOf(read("catalogue"), 0);
    EntryList const texts = listOf(read("supplier"), 0);
    auto const exclusions = read("exclusions");
    Searches searches(component, list, exclusions, 40);
    constexpr std::size_t kEvery = 5;  // each percentage has other texts
    for (int percent = 0; percent <= 100; ++percent) {
        for (std::size_t i = static_cast<std::size_t>(percent) % kEvery; i < texts.entries.size();
             i += kEvery)
            searches.expectSame(texts.units(i), {percent, percent});
    }
}

}  // namespace
