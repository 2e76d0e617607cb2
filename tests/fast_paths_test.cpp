// The fast paths answer as the plain ones do, with the limit where the plain answer turns, one
// below and one above.
#include <optional>

#include "compare/damerau_levenshtein_distance.h"
#include "compare/word_comparison.h"
#include "search/entry_matcher.h"
#include "search/plain_search.h"
#include "tests/random_text.h"
#include "tests/test_support.h"

using namespace comparer;

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr int kShare = 4;
#else
constexpr int kShare = 1;
#endif

// The least limit that lets the texts count as alike; `most` does.
template <class Answer>
unsigned long turnOf(unsigned long most, Answer const& isAlike) {
    unsigned long low = 0;
    while (low < most) {
        unsigned long const middle = (low + most) / 2;
        isAlike(middle) ? most = middle : low = middle + 1;
    }
    return low;
}

std::u16string joined(std::vector<std::u16string> const& words, std::u16string const& with) {
    std::u16string text;
    for (auto const& word : words)
        text += word + with;
    return text;
}

// One search text, held against one entry after another, each in the same dictionary.
struct Searches {
    Searches(std::u16string_view searchText, std::u16string_view exclusionTexts,
             std::u16string_view sampleText, unsigned long room)
        : text(units(searchText)),
          exclusions(units(exclusionTexts)),
          sample(units(sampleText)),
          samples{sample},
          plain(text, exclusions, ';'),
          matcher(text, dictionary, exclusions, ';', samples, room) {}

    void expectSame(std::u16string_view entry) {
        Utf16View const view = inDictionary(entry);
        unsigned long const turn = turnOf(text.size() + entry.size(), [&](unsigned long limit) {
            return plain.isMatch(view, limit);
        });
        for (unsigned long limit = turn - (turn > 0); limit <= turn + 1; ++limit)
            ASSERT_EQ(matcher.isMatch(view, limit), limit >= turn) << shown(entry) << limit;
    }

    // With more text behind it, or none.
    Utf16View inDictionary(std::u16string_view entry) {
        std::size_t const behind = entry.size() % 2 == 0 ? 20 : 0;
        std::size_t const at = dictionary.size() - behind - entry.size();
        std::copy(entry.begin(), entry.end(), dictionary.begin() + static_cast<long>(at));
        return Utf16View(dictionary).substr(at, entry.size());
    }

    Utf16String const text;
    Utf16String const exclusions;
    Utf16String dictionary = Utf16String(10'000, 'x');
    Utf16String const sample;
    std::array<Utf16View, 1> const samples;
    PlainSearch const plain;
    EntryMatcher matcher;
};

TEST(FastPaths, AgreeOnRandomSearches) {
    RandomText random(256);
    for (int round = 0; round < 240 / kShare; ++round) {
        if (round % 5 == 0) random.stock.clear();
        auto const alphabet = kAlphabets[random.below(std::size(kAlphabets))];
        std::size_t const longest = random.oneIn(6) ? 90 : 1 + random.below(8);
        auto const text =
            random.words(1 + random.below(random.oneIn(4) ? 60 : 12), alphabet, longest, u"")
                .substr(0, 1000);
        auto exclusions =
            random.words(random.oneIn(2) ? random.below(5) : 0, alphabet, longest, whole(u";\0"));
        if (random.oneIn(12)) exclusions += u";" + text;
        SCOPED_TRACE(shown(text) + shown(exclusions));
        // With too little room an entry takes the longer way.
        Searches searches(text, exclusions, random.oneIn(2) ? text : u"",
                          random.oneIn(3) ? 1 + random.below(6) : 256);
        for (int entry = 0; entry < 25; ++entry) {
            auto const other = random.oneIn(2)
                                   ? random.edited(text, alphabet, 6)
                                   : random.words(1 + random.below(random.oneIn(6) ? 120 : 12),
                                                  alphabet, longest, u"");
            searches.expectSame(other + u'x');
            searches.expectSame(u"x " + other);
        }
    }
}

TEST(FastPaths, AgreeOnCollidingWords) {
    auto const words = collidingWords();
    std::u16string const all = joined(words, u" ");
    std::u16string const half = joined({words.begin(), words.begin() + 90}, u" ");
    std::u16string const few = joined({words.end() - 5, words.end()}, u" ") + u"red";
    std::u16string const none = u"blue red";
    for (auto const& text : {half, few, none}) {
        for (auto const& exclusions : {std::u16string(), few, joined(words, u";")}) {
            Searches searches(text, exclusions, u"", 256);
            Searches tight(text, exclusions, u"", text == half ? 90 : 20);
            for (auto const& entry : {all, none, half, few, half + half + none + half, few + few}) {
                searches.expectSame(entry);
                tight.expectSame(entry);
            }
        }
    }
}

// Most of them is whitespace, repeated or excluded.
TEST(FastPaths, AgreeOnLongEntries) {
    RandomText random(1000);
    for (std::size_t const spaces : {0U, 1U, 6U}) {
        auto const text = random.run(kAlphabets[2].data() + std::u16string(spaces, u' '), 1000);
        Searches searches(text, u"ltd;" + text.substr(0, 30), text, 256);
        for (std::size_t const size : {1999U, 4000U, 4001U, 4500U, 6000U, 9000U}) {
            std::u16string entry = random.edited(text, kAlphabets[2], 400);
            while (entry.size() < size)
                entry += u" ltd " + std::u16string(random.below(90), u' ') + text.substr(500);
            entry.resize(size);
            searches.expectSame(entry);
            Utf16View const view = searches.inDictionary(entry);
            for (unsigned long const limit : {300U, 450U, 600U, 670U})
                EXPECT_EQ(searches.matcher.isMatch(view, limit),
                          searches.plain.isMatch(view, limit));
        }
    }
}

TEST(FastPaths, AgreeOnShortEntriesForALongText) {
    RandomText random(129);
    for (std::size_t const length : {65U, 350U, 490U}) {
        // Also the first and the last unit of 64.
        auto const alphabet = length == 350 ? u"@\u007F\u0080\u0400\uFFFF" : u"abcde";
        auto const run = [&](std::size_t size) { return random.run(alphabet, size); };
        Searches searches(run(length) + u" xxx zzz " + run(length), u"", u"", 256);
        for (int entry = 0; entry < 60; ++entry) {
            auto const left = run(random.below(30)) + u"xzx" + run(random.below(9));
            for (auto const* const shared : {u"", u"xxx ", u"zzz xxx "})
                searches.expectSame(shared + left);
        }
    }
}

// By way of the word list and by way of maps.
void expectSameComparison(std::u16string_view first, std::u16string_view second,
                          std::vector<Utf16String> const& exclusions) {
    static auto const distance = std::make_unique<DamerauLevenshteinDistance>();
    Utf16View const a(hostUnits(first.data()), first.size());
    Utf16View const b(hostUnits(second.data()), second.size());
    unsigned long const turn = turnOf(first.size() + second.size(), [&](unsigned long limit) {
        return distance->compareByMaps(a, b, limit, exclusions);
    });
    for (unsigned long limit = turn - (turn > 0); limit <= turn + 1; ++limit) {
        auto const answer = compareByWordList(TextMeasures(a), TextMeasures(b), limit, exclusions);
        ASSERT_EQ(answer.value_or(limit >= turn), limit >= turn)
            << shown(first) << shown(second) << limit;
    }
}

TEST(FastPaths, AgreeOnComparisons) {
    RandomText random(17);
    for (int round = 0; round < 6000 / kShare; ++round) {
        if (round % 20 == 0) random.stock.clear();
        RandomPair const texts(random, random.oneIn(8) ? 60 : 1 + random.below(8),
                               random.oneIn(6) ? 60 : 12);
        std::vector<Utf16String> exclusions;
        if (random.oneIn(3))
            exclusions = {{},
                          units(u"a b"),
                          Utf16String(2000, 'a'),
                          units(random.stock.empty() ? u"a" : random.stock.back())};
        expectSameComparison(texts.first, texts.second, exclusions);
    }
}

// A scan of a list takes texts of any length, words that collide, and whitespace without end.
TEST(FastPaths, AgreeOnLongComparisons) {
    RandomText random(40);
    auto const colliding = joined(collidingWords(), u" ");
    std::u16string const wide =
        u"ab" + std::u16string(20'000, u' ') + random.run(kAlphabets[1], 200);
    auto const many = random.words(600, kAlphabets[1], 8, u"");
    auto const word = random.run(kAlphabets[1], 5000);
    std::u16string const texts[] = {colliding, wide,
                                    many,      random.edited(many, kAlphabets[1], 30),
                                    word,      random.run(kAlphabets[1], 201),
                                    u"ab"};
    for (auto const& first : texts) {
        for (auto const& second : texts) {
            expectSameComparison(first, second, {});
            expectSameComparison(first, second, {units(u"ab")});
        }
    }
    auto words = collidingWords();
    std::reverse(words.begin(), words.end());
    Component component(addIn());
    EXPECT_EQ(component.compare(colliding, joined(words, u" "), 100), true);
    EXPECT_EQ(component.compare(colliding, joined(words, u" ") + u"x", 100), false);
}

}  // namespace
