// The index against the plain computation: an entry that matches must never be left out, and most
// that do not match must be.
#include "near_text/entry_index.h"

#include "tests/entry_lists.h"
#include "tests/random_text.h"

namespace {

using near_text::EntryIndex;
using near_text::EntryList;
using near_text::SearchLimits;

std::vector<bool> among(near_text::Indices const& indices, std::size_t size) {
    std::vector<bool> isAmong(size);
    for (unsigned long const index : indices)
        isAmong.at(index) = true;
    return isAmong;
}

// At several percentages about the one at which the last entry stops matching.
void expectNoneLeftOut(SearchArguments in, int percentLong) {
    auto const excluded = stand_in_host::readExclusions(in.exclusions, in.separator);
    auto const plain = stand_in_host::explainSearch(in);
    if (plain.empty()) return;
    EntryList const list = listOf(in.dictionary, in.separator);
    EntryIndex const index(list, excluded);
    ASSERT_EQ(plain.size(), list.entries.size());
    for (int const percent : turningPercents(plain.back())) {
        in.percentShort = percent;
        in.percentLong = percentLong < 0 ? percent : percentLong;
        SearchLimits const limits(in.lengthThreshold, in.percentShort, in.percentLong);
        // Several texts at once, so that one could get what is another's.
        std::u16string_view const texts[] = {list.units(0), in.text, u" ", in.text};
        auto const candidates = index.candidates(texts, limits);
        ASSERT_EQ(candidates[1], candidates[3]);
        auto const isCandidate = among(candidates[1], plain.size());
        auto const entries = stand_in_host::explainSearch(in);
        for (std::size_t i = 0; i < entries.size(); ++i) {
            ASSERT_TRUE(!entries[i].isAlike || isCandidate[i])
                << i << shown(list.units(i)) << shown(in.text) << shown(in.exclusions)
                << in.lengthThreshold << " " << in.percentShort << " " << in.percentLong;
        }
    }
}

TEST(EntryIndex, LeavesNoMatchOutOfRandomLists) {
    RandomText random(12);
    for (int round = 0; round < 3000; ++round) {
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

// Sums of counters too, some at their end and some just below it.
TEST(EntryIndex, LeavesNoMatchOutWhereSumsEnd) {
    RandomText random(16 * 255);
    auto const text = random.run(kAlphabets[1], 16 * 255);
    auto const entry = random.edited(text, kAlphabets[1], 60);
    expectNoneLeftOut({text, entry, u';', 0, 0, 0, u""}, -1);
}

TEST(EntryIndex, LeavesOutMostThatDoNotMatch) {
    RandomText random(1);
    std::u16string dictionary;
    for (int entry = 0; entry < 2000; ++entry)
        dictionary += random.run(kAlphabets[1], 20 + random.below(40)) + u";";
    stand_in_host::ExcludedWords const none;
    EntryList const list = listOf(dictionary, u';');
    EntryIndex const index(list, none);
    std::size_t left = 0;
    for (std::size_t i = 0; i < 100; ++i) {
        std::u16string_view const text[] = {list.units(i)};
        left += index.candidates(text, SearchLimits(0, 80, 80))[0].size();
    }
    EXPECT_LT(left, 110U) << "100 of them find themselves";
}

TEST(ByteLanes, AreThePlainOnes) {
    using near_text::ByteLanes;
    using near_text::PlainByteLanes;
    RandomText random(16);
    auto const lanes = [](auto const& of) {
        std::array<std::uint8_t, near_text::kByteLanes> bytes;
        std::memcpy(bytes.data(), &of, bytes.size());
        return bytes;
    };
    for (int round = 0; round < 2000; ++round) {
        std::uint8_t bytes[2 * near_text::kByteLanes];
        for (std::uint8_t& byte : bytes)
            byte = static_cast<std::uint8_t>(random.oneIn(3) ? 255 * random.below(2)
                                                             : random.below(256));
        auto const a = ByteLanes::load(bytes);
        auto const b = random.oneIn(4) ? ByteLanes::all(bytes[20]) : ByteLanes::load(bytes + 16);
        auto const plainA = PlainByteLanes::load(bytes);
        auto const plainB = PlainByteLanes::load(lanes(b).data());
        ASSERT_EQ(lanes(a.plus(b)), lanes(plainA.plus(plainB)));
        ASSERT_EQ(lanes(a.minus(b)), lanes(plainA.minus(plainB)));
        ASSERT_EQ(a.minus(b).zeros(), plainA.minus(plainB).zeros());
        ASSERT_EQ(a.sum(), plainA.sum());
    }
}

}  // namespace
