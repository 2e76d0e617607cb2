// What the fast roads are made of, each part held against a form that is plain to see.
#include <bit>
#include <cmath>
#include <map>
#include <numeric>
#include <unordered_map>

#include "compare/bag_distance.h"
#include "compare/bit_parallel_distance.h"
#include "compare/limit.h"
#include "compare/weighted_distance.h"
#include "compare/word_list.h"
#include "search/section_scanner.h"
#include "tests/random_text.h"
#include "tests/test_support.h"

namespace {

#if defined(__SSE2__)
// All that lanes can do, with these numbers in them.
template <class Units, class Bytes, class Four>
auto computed(std::array<unsigned short, 16> const& units,
              std::array<std::uint8_t, 64> const& bytes,
              std::array<std::uint32_t, 8> const& numbers) {
    Units const a = Units::load(units.data());
    Units const b = Units::load(units.data() + kUnitLanes);
    Units const low = Units::filledWith(0xFF);
    std::array<Bytes, 4> some;
    for (unsigned long i = 0; i < 4; ++i)
        some[i] = Bytes::load(bytes.data() + i * kByteLanes);
    Bytes const both = packed(a & low, b & low);
    std::vector<std::array<std::uint8_t, 16>> lanes;
    for (Units const made : {a == b, a | b, a ^ b, shiftedDown<3>(a), low})
        lanes.push_back(std::bit_cast<std::array<std::uint8_t, 16>>(made));
    for (Bytes const made :
         {both, both == some[0], both & some[0], both - some[0], Bytes::filledWith(bytes[0])}) {
        lanes.push_back(std::bit_cast<std::array<std::uint8_t, 16>>(made));
    }
    lanes.push_back(std::bit_cast<std::array<std::uint8_t, 16>>(Four::sumsOf(some)));
    return std::tuple(lanes, bitsOf(a == b, b == low),
                      excess(Four::load(numbers.data()), Four::load(numbers.data() + 4)));
}

TEST(Lanes, AreTheSameInBothForms) {
    RandomText random(16);
    for (int round = 0; round < 2000; ++round) {
        std::array<unsigned short, 16> units;
        std::array<std::uint8_t, 64> bytes;
        std::array<std::uint32_t, 8> numbers;
        for (auto& unit : units)
            unit = static_cast<unsigned short>(random.oneIn(2) ? 255 : random.below(1 << 16));
        for (auto& byte : bytes)
            byte = static_cast<std::uint8_t>(random.oneIn(2) ? 255 : random.below(256));
        for (auto& number : numbers)
            number = static_cast<std::uint32_t>(random.below(1 << 15));
        EXPECT_EQ((computed<sse_lanes::UnitLanes, sse_lanes::ByteLanes, sse_lanes::Four>(
                      units, bytes, numbers)),
                  (computed<plain_lanes::UnitLanes, plain_lanes::ByteLanes, plain_lanes::Four>(
                      units, bytes, numbers)));
    }
}
#endif

// In a block of exactly its size, so that a unit read too far is one too many.
std::vector<unsigned short> exactly(std::u16string_view text) {
    return {text.begin(), text.end()};
}

TEST(Blocks, FindWhatAScanFinds) {
    RandomText random(130);
    IsSectionEnd const isEnd{u';'};
    for (unsigned long length = 0; length <= 130; ++length) {
        for (int round = 0; round < 8; ++round) {
            auto const text =
                exactly(random.run(round < 4 ? whole(u"a\t\n\r ;\0\x0120\xFFFF") : u"ab ", length));
            std::uint64_t white = 0;
            std::uint64_t ends = 0;
            for (unsigned long i = 0; i < std::min(length, kBlockUnits); ++i) {
                white |= std::uint64_t{isWhiteSpaceUnit(text[i])} << i;
                ends |= std::uint64_t{isEnd(text[i])} << i;
            }
            EXPECT_EQ(bitsWhere({text.data(), length}, IsWhiteSpace()), white);
            EXPECT_EQ(bitsWhere({text.data(), length}, isEnd), ends);
        }
    }
}

TEST(Tolerance, RoundsAsTheLibraryDoes) {
    for (unsigned long percent = 0; percent <= 100; ++percent) {
        for (unsigned long i = 0; i < 3000; ++i) {
            unsigned long const maximum = i < 2000 ? i : 0xFFFF'FFFF / (i - 1999);
            double const part =
                (1.0 - static_cast<double>(percent) / 100.0) * static_cast<double>(maximum);
            ASSERT_EQ(Tolerance(percent).limit(maximum),
                      static_cast<unsigned long>(std::round(part)))
                << percent << " " << maximum;
        }
    }
    EXPECT_EQ(Tolerance(101).limit(~0U) + Tolerance(~0UL).limit(1) + Tolerance(200).limit(0), 0U);
}

// The same text in pieces, some of them empty.
std::vector<Utf16View> cut(RandomText& random, Utf16View text) {
    std::vector<Utf16View> pieces;
    while (!text.empty()) {
        pieces.push_back(text.substr(0, random.below(text.size() + 1)));
        if (random.oneIn(4)) pieces.back() = text;
        text.remove_prefix(pieces.back().size());
    }
    return pieces;
}

template <class Rows>
bool isWithinRows(unsigned long limit, Utf16View pattern, Pieces text) {
    MatchVector<Rows> match(pattern.size());
    for (unsigned long row = 0; row < pattern.size(); ++row)
        match.add(pattern[row], row);
    return isWithin(limit, match, pattern.size(), text);
}

// With the limit at the distance, one below and one above.
void expectDistance(RandomText& random, BandedDistance& banded, std::u16string const& first,
                    std::u16string const& second) {
    Utf16String const a = units(first);
    Utf16String const b = units(second);
    unsigned long const distance = weightedDistance(a, b, 1, 1, 1);
    ASSERT_EQ(banded.between(a, b), distance) << shown(first) << shown(second);
    for (unsigned long limit = distance - (distance > 0); limit <= distance + 1; ++limit) {
        bool const isNear = distance <= limit;
        auto const inPieces = cut(random, b);
        SCOPED_TRACE(shown(first) + shown(second) + std::to_string(limit));
        if (a.size() <= 64) {
            ASSERT_EQ(isWithinRows<Rows64>(limit, a, inPieces), isNear);
        }
        if (a.size() <= 128) {
            ASSERT_EQ(isWithinRows<Rows128>(limit, a, inPieces), isNear);
        }
        ASSERT_EQ(banded.isWithin(limit, cut(random, a), inPieces), isNear);
        ASSERT_EQ(isWithin(limit, inPieces, cut(random, a)), isNear);
    }
}

TEST(Distance, IsTheSameWhateverKernelWorksItOut) {
    RandomText random(64);
    BandedDistance banded;
    constexpr std::size_t kLengths[] = {0,   1,   2,   31,  63,  64,  65,  127, 128,
                                        129, 191, 192, 193, 255, 256, 257, 320};
    for (auto const alphabet : kAlphabets) {
        for (std::size_t const length : kLengths) {
            auto const first = random.run(alphabet, length);
            for (std::size_t const other : kLengths)
                expectDistance(random, banded, first, random.run(alphabet, other));
            for (std::size_t const edits : {1U, 3U, 10U, 40U}) {
                auto const second = random.edited(first, alphabet, edits);
                expectDistance(random, banded, first, second);
                expectDistance(random, banded, second, first);
            }
        }
    }
}

// Units put in at one end, and as many taken out at the other, lead along the edge of the band; a
// limit one lower is one diagonal too few. Beyond 64 edits the band is widened.
TEST(Distance, HoldsAlongTheEdgeOfTheBand) {
    RandomText random(8);
    BandedDistance banded;
    for (std::size_t const length : {64U, 130U, 192U, 300U}) {
        auto const first = random.run(kAlphabets[2], length);
        for (std::size_t const block : {1U, 2U, 7U, 31U, 32U, 33U, 63U, 64U, 65U}) {
            if (block >= length) continue;
            for (std::size_t const place : {0UL, 63UL, length / 2, length - block}) {
                auto longer = first;
                longer.insert(place, random.run(kAlphabets[1], block));
                expectDistance(random, banded, first, longer);
                expectDistance(random, banded, first, longer.substr(block));
                expectDistance(random, banded, longer.substr(0, length), first);
            }
        }
    }
}

// Rows of words that went are as if they had never been there.
template <class Rows>
void expectRemovable(RandomText& random, std::u16string_view alphabet) {
    unsigned long const most = MatchVector<Rows>::kRows;
    unsigned long const rows = random.oneIn(4) ? most : 1 + random.below(most);
    Utf16String const text = units(random.run(alphabet, rows));
    MatchVector<Rows> all;
    for (unsigned long row = 0; row < rows; ++row)
        all.add(text[row], row);
    MatchVector<Rows> rest = all;
    for (int round = 0; round < 3; ++round) {
        rest.copyRows(all);
        auto words = cut(random, text);
        std::reverse(words.begin(), words.end());
        unsigned long end = rows;
        Utf16String left;
        for (Utf16View const word : words) {
            end -= word.size();
            if (!word.empty() && random.oneIn(2)) {
                rest.removeRows(end, word.size());
            } else {
                left.insert(0, word);
            }
        }
        MatchVector<Rows> anew(left.size());
        for (unsigned long row = 0; row < left.size(); ++row)
            anew.add(left[row], row);
        for (char16_t const unit : std::u16string(alphabet) + u"-\xFFFF")
            ASSERT_TRUE(rest.rowsOf(unit) == anew.rowsOf(unit)) << shown({&unit, 1});
    }
}

TEST(MatchVector, RemovesRows) {
    std::u16string colliding;  // in any table of up to 256 slots
    for (unsigned unit = 0; unit < 0x10000; ++unit) {
        if (((unit ^ unit >> 3U) & 0xFFU) == 7) colliding += static_cast<char16_t>(unit);
    }
    RandomText random(128);
    for (int round = 0; round < 60; ++round) {
        for (std::u16string_view const alphabet : {kAlphabets[0], kAlphabets[2], Text(colliding)}) {
            expectRemovable<Rows64>(random, alphabet);
            expectRemovable<Rows128>(random, alphabet);
        }
    }
}

// Of the units of `first`, those that `second` lacks.
unsigned long missing(std::u16string_view first, std::u16string_view second) {
    std::map<char16_t, long> surplus;
    for (char16_t const unit : first)
        ++surplus[unit];
    for (char16_t const unit : second)
        --surplus[unit];
    return std::accumulate(surplus.begin(), surplus.end(), 0UL, [](auto sum, auto const& entry) {
        return sum + static_cast<unsigned long>(std::max(entry.second, 0L));
    });
}

// The first four alphabets have a bucket for each unit, so that the bound is the bag distance.
TEST(UnitHistogram, CountsWhatAnotherTextLacks) {
    RandomText random(4000);
    std::u16string_view const alphabets[] = {
        kAlphabets[0], kAlphabets[1],
        kAlphabets[2], u"abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTU",
        kAlphabets[3], kAlphabets[4]};
    for (std::size_t kind = 0; kind < std::size(alphabets); ++kind) {
        for (int round = 0; round < 150; ++round) {
            bool const isLong = round % 50 == 0;
            auto const own = random.run(alphabets[kind], isLong ? 4000 : random.below(70));
            auto const other = isLong ? std::u16string(4000 - random.below(40), alphabets[kind][1])
                                      : random.run(alphabets[kind], random.below(70));
            auto const words = units(own);
            auto const sample = units(random.run(alphabets[kind], 30));
            UnitHistogram histogram;
            for (Utf16View const word : cut(random, words))
                histogram.add(word);
            Utf16View const samples[] = {sample};
            histogram.orderBy(random.oneIn(2) ? std::span(samples) : std::span<Utf16View const>());
            ASSERT_EQ(histogram.size(), own.size());
            auto const text = exactly(other);
            unsigned long const lacking = missing(own, other);
            for (unsigned long const enough : {0UL, lacking - (lacking > 0), lacking, 9999UL}) {
                unsigned long const bound = histogram.missingIn({text.data(), text.size()}, enough);
                ASSERT_LE(bound, lacking) << shown(own) << shown(other);
                if (kind < 4) {
                    ASSERT_EQ(bound > enough, lacking > enough) << shown(own) << shown(other);
                }
            }
        }
    }
}

// A map does the same. Some words have the same place in the list's table, whatever its size.
TEST(WordList, KeepsWordsInOrderUntilCutBack) {
    RandomText random(32);
    std::vector<Utf16String> stock;
    while (stock.size() < 50) {
        Utf16String const word = units(random.run(kAlphabets[1], 1 + random.below(9)));
        if (stock.size() % 2 == 0 || hashOf(word) % 64 == 5) stock.push_back(word);
    }
    for (unsigned long const capacity : {1UL, 7UL, 32UL, 40UL}) {
        WordList list(capacity);
        std::vector<Utf16String> held;
        for (int round = 0; round < 3000; ++round) {
            if (random.oneIn(20)) {
                held.resize(random.below(held.size() + 1));
                list.cutBackTo(static_cast<std::uint32_t>(held.size()));
            }
            Utf16String const& word = stock[random.below(stock.size())];
            auto const found = std::find(held.begin(), held.end(), word);
            auto place = static_cast<std::uint32_t>(found - held.begin());
            ASSERT_EQ(list.find(word), found == held.end() ? WordList::kNoRoom : place);
            if (found == held.end() && held.size() == capacity) {
                place = WordList::kNoRoom;
            } else if (found == held.end()) {
                held.push_back(word);
            }
            ASSERT_EQ(list.findOrAdd(word), place);
            ASSERT_TRUE(
                std::equal(held.begin(), held.end(), list.words().begin(), list.words().end()));
        }
    }
}

// Two words of this form whose hashes are the same as far as a list keeps them.
std::pair<Utf16String, Utf16String> alikeInHash(std::u16string const& before, unsigned length,
                                                std::u16string const& behind) {
    std::mt19937_64 engine;
    std::unordered_map<std::uint32_t, Utf16String> seen;
    while (true) {
        Utf16String word = units(before);
        for (auto bits = engine(); word.size() < before.size() + length; bits >>= 16U)
            word += static_cast<unsigned short>(bits);
        word += units(behind);
        auto const [place, isNew] =
            seen.try_emplace(static_cast<std::uint32_t>(hashOf(word)), word);
        if (!isNew && place->second != word) return {place->second, word};
    }
}

// All their units differ, their last or their first.
TEST(WordList, TellsWordsApartThatHaveOneHash) {
    for (auto const& [one, other] :
         {alikeInHash(u"", 3, u""), alikeInHash(u"lead", 3, u""), alikeInHash(u"", 4, u"tail")}) {
        WordList list(2);
        EXPECT_EQ(list.findOrAdd(one), 0U);
        EXPECT_EQ(list.find(other), WordList::kNoRoom);
        EXPECT_EQ(list.findOrAdd(other), 1U);
    }
}

}  // namespace
