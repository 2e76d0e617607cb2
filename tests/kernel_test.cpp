// What the fast paths are made of, each part held against a form that is plain to see.
#include <map>
#include <numeric>
#include <set>
#include <unordered_map>

#include "compare/bag_distance.h"
#include "compare/bit_parallel_distance.h"
#include "compare/weighted_distance.h"
#include "compare/word_list.h"
#include "search/long_pattern.h"
#include "search/section_scanner.h"
#include "search/sparse_alignment.h"
#include "search/unit_finder.h"
#include "tests/random_text.h"
#include "tests/test_support.h"

using namespace comparer;

namespace {

// In a block of exactly its size, so that a unit read too far is one too many.
std::vector<unsigned short> exactly(std::u16string_view text) {
    return {text.begin(), text.end()};
}

TEST(Blocks, FindWhatAScanFinds) {
    RandomText random(130);
    IsSectionEnd const isEnd{u';'};
    for (unsigned long length = 0; length <= 130; ++length) {
        for (int round = 0; round < 8; ++round) {
            auto const text = exactly(random.run(
                round < 4 ? whole(u"a\t\n\r ;\0\x0120\xA0\xFFA0\xFFFF") : u"ab ", length));
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

// The same text in pieces, some of them empty.
struct CutText {
    CutText(RandomText& random, Utf16View text) : size(text.size()), end(text.data() + size) {
        isEndKnown = random.oneIn(2);
        while (!text.empty()) {
            pieces.push_back(text.substr(0, random.below(text.size() + 1)));
            if (random.oneIn(4)) pieces.back() = text;
            text.remove_prefix(pieces.back().size());
        }
    }
    operator Pieces() const { return {pieces, size, isEndKnown ? end : nullptr}; }

    std::vector<Utf16View> pieces;
    unsigned long size;
    unsigned short const* end;
    bool isEndKnown;
};

template <class Rows>
bool isWithinRows(unsigned long limit, Utf16View pattern, Pieces text) {
    MatchVector<Rows> match;
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
        CutText const inPieces(random, b);
        SCOPED_TRACE(shown(first) + shown(second) + std::to_string(limit));
        ASSERT_EQ(a.size() <= 64 ? isWithinRows<Rows64>(limit, a, inPieces) : isNear, isNear);
        ASSERT_EQ(a.size() <= 128 ? isWithinRows<Rows128>(limit, a, inPieces) : isNear, isNear);
        ASSERT_EQ(banded.isWithin(limit, CutText(random, a), inPieces), isNear);
        ASSERT_EQ(isWithin(limit, inPieces, CutText(random, a)), isNear);
    }
}

TEST(Distance, IsTheSameWhateverKernelWorksItOut) {
    RandomText random(64);
    BandedDistance banded;
    constexpr std::size_t kLengths[] = {0,   1,   2,   31,  63,  64,  65,  127, 128,
                                        129, 191, 192, 193, 255, 256, 257, 320};
    std::vector<std::u16string_view> alphabets(std::begin(kAlphabets), std::end(kAlphabets));
    std::u16string many;
    while (many.size() < 300)
        many += static_cast<char16_t>(0x4E00 + 64 * many.size());
    alphabets.emplace_back(many);
    for (auto const alphabet : alphabets) {
        for (std::size_t const length : kLengths) {
            std::u16string const first = length <= alphabet.size()
                                             ? std::u16string(alphabet.substr(0, length))
                                             : random.run(alphabet, length);
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

// A few words are left out each time, and come back. The other text is short, or about as long, or
// has the beginning or the end far from its place.
TEST(LongPattern, KnowsTheDistanceOfWhatIsNotLeftOut) {
    RandomText random(1000);
    std::vector<std::u16string_view> alphabets(std::begin(kAlphabets), std::end(kAlphabets));
    std::u16string many;
    while (many.size() < 300)
        many += static_cast<char16_t>(0x4E00 + 7 * many.size());
    alphabets.emplace_back(many);
    for (int round = 0; round < 160; ++round) {
        auto const alphabet = alphabets[random.below(alphabets.size())];
        auto const all = units(random.run(alphabet, round == 0 ? 1000 : 1 + random.below(500)));
        CutText const words(random, all);
        SparseAlignment alignment(words.pieces);
        LongPattern pattern(words.pieces);
        for (int turn = 0; turn < 10; ++turn) {
            Utf16String left;
            Utf16String out;
            std::vector<unsigned long> leftOut;
            unsigned long const share = 1 + random.below(5);
            for (unsigned long i = 0; i < words.pieces.size(); ++i) {
                bool const isOut = random.oneIn(share);
                if (isOut) leftOut.push_back(i);
                (isOut ? out : left) += words.pieces[i];
            }
            auto const run = [&](std::size_t most) {
                return units(random.run(alphabet, random.below(most)));
            };
            Utf16String const others[] = {
                run(40), run(700), out + run(20) + left.substr(0, 90),
                left.substr(left.size() - random.below(std::min(left.size(), 60UL) + 1)) + run(30)};
            Utf16String const& other = others[turn % 4];
            unsigned long const distance = weightedDistance(left, other, 1, 1, 1);
            for (unsigned long const word : leftOut) {
                alignment.leaveOut(word);
                pattern.leaveOut(word);
            }
            CutText const text(random, other);
            for (unsigned long i = distance - (distance > 0); i <= distance + 1; ++i) {
                ASSERT_EQ(pattern.isWithin(i, text), i >= distance) << left.size() << other.size();
                if (i + other.size() < left.size()) continue;
                unsigned long const spare = i + other.size() - left.size();
                if (spare > SparseAlignment::kMostSpare) continue;
                ASSERT_EQ(alignment.isWithin(spare, text), i >= distance) << left.size();
            }
            for (unsigned long const word : leftOut) {
                alignment.takeBack(word);
                pattern.takeBack(word);
            }
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

TEST(UnitFinder, FindsWhatASearchFinds) {
    RandomText random(65);
    for (int round = 0; round < 300; ++round) {
        auto const text =
            units(random.run(u"aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaab", 1 + random.below(700)));
        UnitFinder finder(text, 'b');
        CutText const parts(random, text);
        for (Utf16View const part : parts.pieces) {
            if (random.oneIn(3)) continue;
            ASSERT_EQ(finder.isIn(part), part.find('b') != part.npos) << part.size();
        }
    }
}

// The first three alphabets have a bucket for each unit, so that the bound is the bag distance.
TEST(UnitHistogram, CountsWhatAnotherTextLacks) {
    RandomText random(4000);
    for (std::size_t kind = 0; kind < std::size(kAlphabets); ++kind) {
        for (int round = 0; round < 150; ++round) {
            bool const isLong = round % 50 == 0;
            auto const own = random.run(kAlphabets[kind], isLong ? 4000 : random.below(70));
            auto const other = isLong ? std::u16string(4000 - random.below(40), kAlphabets[kind][1])
                                      : random.run(kAlphabets[kind], random.below(70));
            auto const words = units(own);
            auto const sample = units(random.run(kAlphabets[kind], 30));
            UnitHistogram histogram;
            CutText const inWords(random, words);
            for (Utf16View const word : inWords.pieces)
                histogram.add(word);
            Utf16View const samples[] = {sample};
            histogram.orderBy(random.oneIn(2) ? std::span(samples) : std::span<Utf16View const>());
            ASSERT_EQ(histogram.size(), own.size());
            auto const text = exactly(other);
            unsigned long const lacking = missing(own, other);
            unsigned long const inBuckets = missingUnits(words, {text.data(), text.size()});
            ASSERT_LE(inBuckets, lacking);
            ASSERT_TRUE(kind > 2 || inBuckets == lacking);
            for (unsigned long const enough : {0UL, lacking - (lacking > 0), lacking, 9999UL}) {
                unsigned long const bound = histogram.missingIn({text.data(), text.size()}, enough);
                ASSERT_LE(bound, inBuckets) << shown(own) << shown(other);
                ASSERT_TRUE(kind > 2 || (bound > enough) == (lacking > enough)) << shown(other);
            }
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
            seen.try_emplace(static_cast<std::uint32_t>(hashOf(word, HashKey())), word);
        if (!isNew && place->second != word) return {place->second, word};
    }
}

// All their units differ, their last or their first.
TEST(WordList, TellsWordsApartThatHaveOneHash) {
    for (auto const& [one, other] :
         {alikeInHash(u"", 3, u""), alikeInHash(u"lead", 3, u""), alikeInHash(u"", 4, u"tail")}) {
        WordList list(2, {});
        EXPECT_EQ(list.findOrAdd(one), 0U);
        EXPECT_EQ(list.find(other), WordList::kNotFound);
        for (int round = 0; round < 2; ++round) {
            EXPECT_EQ(list.findOrAdd(other), 1U);
            EXPECT_EQ(list.find(other), 1U);
            EXPECT_EQ(list.find(one), 0U);
            list.cutBackTo(1);
            EXPECT_EQ(list.find(other), WordList::kNotFound);
        }
    }
}

// A list that grows and is cut back, with words that collide, others, and some that are only
// appended. With a key of its own, from some time on, and without.
TEST(WordList, HoldsWhatAMapHolds) {
    RandomText random(77);
    auto const colliding = collidingWords();
    std::vector<Utf16String> words;
    for (std::size_t i = 0; i < 300; ++i)
        words.push_back(units(i < colliding.size() ? colliding[i] : numbered(i, 2)));
    for (int round = 0; round < 40; ++round) {
        std::vector<Utf16View> const texts(round % 4 < 2 ? words.begin() : words.end(),
                                           words.end());
        WordList list(random.below(3), texts);
        std::map<Utf16String, std::uint32_t> map;
        std::vector<Utf16String> order;
        for (std::size_t i = 0; i < 600; ++i) {
            Utf16String const& word = words[random.below(round % 2 == 0 ? 300 : 100)];
            auto const [found, isNew] =
                map.try_emplace(word, static_cast<std::uint32_t>(order.size()));
            if (isNew) order.push_back(word);
            ASSERT_EQ(list.findOrAdd(word), found->second);
            if (random.oneIn(150)) {
                list.append(units(u"appended"));
                order.push_back(units(u"appended"));
            }
            if (!random.oneIn(90)) continue;
            std::size_t const size = random.below(order.size() + 1);
            list.cutBackTo(static_cast<std::uint32_t>(size));
            for (; order.size() > size; order.pop_back())
                map.erase(order.back());
        }
        for (Utf16String const& word : words)
            ASSERT_EQ(list.find(word), map.contains(word) ? map[word] : WordList::kNotFound);
        EXPECT_EQ(list.hasOwnKey(), round % 4 < 2);
    }
}

TEST(WordList, TakesNoKeyForOrdinaryWords) {
    std::vector<Utf16String> words;
    for (std::size_t i = 0; i < 60'000; ++i)
        words.push_back(units(numbered(i, 3)));
    std::vector<Utf16View> const texts(words.begin(), words.end());
    WordList list(1, texts);
    for (Utf16String const& word : words)
        list.findOrAdd(word);
    EXPECT_FALSE(list.hasOwnKey());
}

TEST(HashKey, DependsOnEveryUnitAndOnWhereATextEnds) {
    std::set<std::uint64_t> keys;
    for (std::size_t length = 0; length < 9; ++length) {
        for (std::size_t changed = 0; changed <= length; ++changed) {
            Utf16String text(length, 'a');
            if (changed < length) text[changed] = 'b';
            for (std::size_t const cut : {length / 2, length}) {
                Utf16View const texts[] = {Utf16View(text).substr(0, cut),
                                           Utf16View(text).substr(cut)};
                HashKey const key = keyOf(texts);
                keys.insert({key.first, key.second});
            }
        }
    }
    // Each of the 45 texts twice, but for the empty one. Neither half of a key comes again.
    EXPECT_EQ(keys.size(), 2 * (2 * 45U - 1));
}

}  // namespace
