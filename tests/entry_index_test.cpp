// The index against the plain computation: an entry that matches must never be left out, and most
// that do not match must be. With an index or without, a search answers the same.
#include "near_text/matching/index/entry_index.h"

#include <numeric>

#include "near_text/matching/entry_search.h"
#include "near_text/matching/index/shortlist.h"
#include "reference/whitespace.h"
#include "tests/random_text.h"

namespace {

using near_text::EntryIndex;
using near_text::EntryList;
using near_text::EntrySearch;
using near_text::Indices;
using near_text::SearchLimits;
using near_text::Shortlist;

// A list as the add-in would read it. Throws where no entry holds a word.
EntryList listOf(std::u16string_view dictionary, char16_t separator) {
    static near_text::Preparer const asItIs{{}};
    near_text::EntryListBuilder builder(asItIs, separator);
    std::size_t begin = 0;
    for (std::size_t end = 0; end <= dictionary.size(); ++end) {
        bool const isEnd = end == dictionary.size() || dictionary[end] == 0 ||
                           (dictionary[end] == separator && !reference::isWhitespace(separator));
        if (!isEnd) continue;
        char16_t const joint = begin > 0 ? dictionary[begin - 1] : u'\0';
        builder.add(end + 1, dictionary.substr(begin, end - begin), {}, {}, joint);
        begin = end + 1;
    }
    return builder.take("the test");
}

// A search that asks an index from its first text on.
struct ShortenedSearch : EntrySearch {
    ShortenedSearch(Component& asked, EntryList const& searched, std::u16string_view words,
                    reference::ExcludedWords const& excluded, int limit)
        : EntrySearch(asked, searched, words, limit, &index), index(searched, excluded, limit) {
        for (std::size_t i = 0; i < Shortlist::kSearchesWithout; ++i)
            find(u"-", {100, 100});
    }
    Shortlist index;
};

// At several percentages about the one at which the last entry stops matching.
void expectNoneLeftOut(SearchArguments in, int percentLong) {
    auto const excluded = reference::readExclusions(in.exclusions, in.separator);
    auto const plain = reference::explainSearch(in);
    if (plain.empty()) return;
    EntryList const list = listOf(in.dictionary, in.separator);
    EntryIndex const index(list, excluded);
    ASSERT_EQ(plain.size(), list.entries.size());
    Component component(addIn());
    ShortenedSearch shortened(component, list, in.exclusions, excluded, in.lengthThreshold);
    for (int const percent : turningPercents(plain.back())) {
        in.percentShort = percent;
        in.percentLong = percentLong < 0 ? percent : percentLong;
        SearchLimits const limits(in.lengthThreshold, in.percentShort, in.percentLong);
        // Several texts at once, so that one could get what is another's.
        std::u16string_view const texts[] = {list.units(0), in.text, u" ", in.text};
        auto const candidates = index.candidates(texts, limits);
        ASSERT_EQ(candidates[1], candidates[3]);
        Indices alike;
        auto const entries = reference::explainSearch(in);
        for (std::size_t i = 0; i < entries.size(); ++i) {
            if (entries[i].isAlike) alike.push_back(i);
        }
        SCOPED_TRACE(shown(in.text) + shown(in.dictionary) + shown(in.exclusions) +
                     std::to_string(in.lengthThreshold) + " " + std::to_string(percent) + " " +
                     std::to_string(in.percentLong));
        ASSERT_TRUE(
            std::includes(candidates[1].begin(), candidates[1].end(), alike.begin(), alike.end()));
        if (in.text.size() <= 1000) {
            ASSERT_EQ(shortened.find(in.text, {percent, in.percentLong}), alike);
        }
    }
    EXPECT_TRUE(shortened.find(u" ", {0, 0}).empty());
    EXPECT_THROW(shortened.find(std::u16string(1001, u'a'), {0, 0}), near_text::Refused);
}

TEST(EntryIndex, LeavesNoMatchOutOfRandomLists) {
    RandomText random(12);
    for (int round = 0; round < roundsOf(3000); ++round) {
        if (round % 20 == 0) random.stock.clear();
        // Now and then several blocks of entries.
        RandomSearch const search(random, random.oneIn(10) ? 1500 : 60);
        int const percentLong = random.oneIn(3) ? static_cast<int>(random.below(130)) - 10 : -1;
        expectNoneLeftOut(search.arguments(), percentLong);
    }
}

// Counters at their end, units that the list does not have, and words that count nowhere.
TEST(EntryIndex, LeavesNoMatchOutWhereCountersEnd) {
    RandomText random(255);
    for (std::size_t const length : {254U, 255U, 256U, 510U}) {
        for (std::size_t const entryLength : {250U, 256U, 300U, 1500U}) {
            auto const text = std::u16string(length, u'a') + u"bc";
            auto const same = std::u16string(entryLength, u'a') + u"\u0431c";
            // 300 units that share counters.
            std::u16string many;
            for (char16_t unit = 0; unit < 300; ++unit)
                many += static_cast<char16_t>(u'\u4E00' + unit);
            for (auto const& entry : {same, same + u" ltd ltd " + text, many + text}) {
                auto const dictionary = u"ltd;" + many + u";" + many + u" " + same + u";" + entry;
                for (std::u16string_view const other : {u"", u"ltd", u"\u0416\u0416"}) {
                    expectNoneLeftOut(
                        {text + u" " + std::u16string(other), dictionary, u';', 300, 0, 0, u"ltd"},
                        random.oneIn(2) ? -1 : 90);
                }
            }
        }
    }
}

TEST(EntryIndex, LeavesOutMostThatDoNotMatch) {
    RandomText random(1);
    std::u16string dictionary;
    for (int entry = 0; entry < 2000; ++entry)
        dictionary += random.run(kAlphabets[1], 20 + random.below(40)) + u";";
    reference::ExcludedWords const none;
    EntryList const list = listOf(dictionary, u';');
    EntryIndex const index(list, none);
    std::size_t left = 0;
    for (std::size_t i = 0; i < 100; ++i)
        left += index.candidates(list.units(i), SearchLimits(0, 80, 80)).size();
    EXPECT_LT(left, 110U) << "100 of them find themselves";
}

TEST(ShortenedSearch, AnswersAsAWholeOneAtEveryPercentage) {
    auto const read = [](std::string const& name) {
        auto lines = near_text::toUnits(contentOf(NEAR_TEXT_SAMPLES "/" + name + ".txt"));
        std::replace(lines.begin(), lines.end(), u'\n', u'\0');
        return lines;
    };
    EntryList const list = listOf(read("catalogue"), 0);
    EntryList const texts = listOf(read("supplier"), 0);
    auto const exclusions = read("exclusions");
    auto const excluded = reference::readExclusions(exclusions, 0);
    Component component(addIn());
    EntrySearch whole(component, list, exclusions, 40);
    ShortenedSearch shortened(component, list, exclusions, excluded, 40);
    for (int percent = 0; percent <= 100; ++percent) {
        // Each percentage has other texts.
        for (std::size_t i = static_cast<std::size_t>(percent) % 5; i < texts.entries.size();
             i += 5)
            ASSERT_EQ(shortened.find(texts.units(i), {percent, percent}),
                      whole.find(texts.units(i), {percent, percent}));
    }
}

// More than the add-in gets at a time.
TEST(ShortenedSearch, AnswersAsAWholeOneInPortions) {
    RandomText random(9);
    std::u16string dictionary;
    while (dictionary.size() < 400000)
        dictionary += random.run(u"abcd ", 10 + random.below(50)) + u";";
    EntryList const list = listOf(dictionary, u';');
    Component component(addIn());
    EntrySearch whole(component, list, {}, 40);
    Indices every(list.entries.size());
    std::iota(every.begin(), every.end(), 0);
    for (int const percent : {0, 40}) {
        Indices const found = whole.find(list.units(5), {percent, percent});
        EXPECT_GT(found.size(), 1000U);
        EXPECT_EQ(whole.findAmong(list.units(5), {percent, percent}, every), found);
    }
}

}  // namespace
