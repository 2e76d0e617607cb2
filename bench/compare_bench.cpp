// StringCompare: real pairs, pairs of so many words, and single words.
#include <algorithm>
#include <iterator>

#include "bench/bench_texts.h"
#include "bench/cases.h"
#include "bench/colliding_words.h"
#include "bench/subjects.h"

namespace bench {

namespace {

// So many that no branch is learnt by heart.
constexpr unsigned kPairs = 1000;

template <class MakePair>
void addPairs(std::string const& name, int percent, MakePair const& makePair) {
    addCase("compare/" + name + "/" + std::to_string(percent), [percent, makePair](auto& state) {
        Pairs pairs;
        for (unsigned i = 0; i < kPairs; ++i)
            pairs.push_back(makePair(i));
        race(state, {compareCase(pairs, percent)}, kPairs);
    });
}

std::u16string someEntry(std::size_t which) {
    static auto const all = entries(50'000);
    return all[which % all.size()];
}

std::u16string firstWords(std::size_t count, unsigned seed) {
    auto const from = text(1000, false, seed);
    std::size_t end = 0;
    for (std::size_t i = 0; i < count && end != from.npos; ++i)
        end = from.find(u' ', end + 1);
    return from.substr(0, end);
}

std::u16string oneWord(std::size_t length, unsigned seed) {
    auto word = text(2 * length + 100, false, seed);
    std::erase(word, u' ');
    word.resize(length);
    return word;
}

// One half of the words against the other.
Pairs pairOf(std::vector<std::u16string> const& words) {
    std::u16string texts[2];
    for (std::size_t i = 0; i < words.size(); ++i)
        texts[i % 2] += words[i] + u' ';
    return {{texts[0], texts[1]}};
}

}  // namespace

void addCompareCases() {
    addPairs("real_near", 85, [](std::size_t i) {
        return std::pair(someEntry(701 * i),
                         mistyped(someEntry(701 * i), 30, static_cast<unsigned>(i)));
    });
    addPairs("real_unlike", 85,
             [](std::size_t i) { return std::pair(someEntry(701 * i), someEntry(911 * i + 300)); });
    for (std::size_t const words : {2UL, 4UL, 6UL, 12UL, 20UL, 80UL}) {
        auto const name = std::to_string(words) + "_words_";
        addPairs(name + "near", 85, [words](unsigned i) {
            return std::pair(firstWords(words, i), mistyped(firstWords(words, i), 20, i));
        });
        addPairs(name + "unlike", 85, [words](unsigned i) {
            return std::pair(firstWords(words, i), firstWords(words, kPairs + i));
        });
    }
    for (std::size_t const units : {1UL, 8UL, 16UL, 64UL, 256UL, 1000UL}) {
        auto const name = "word_of_" + std::to_string(units) + "_";
        for (int const percent : {85, 60}) {
            addPairs(name + "near", percent, [units](unsigned i) {
                return std::pair(oneWord(units, i), mistyped(oneWord(units, i), 20, i));
            });
            addPairs(name + "unlike", percent, [units](unsigned i) {
                return std::pair(oneWord(units, i), oneWord(units, kPairs + i));
            });
        }
    }
    addCase("compare/attack", [](auto& state) {
        Pairs const colliding = pairOf(collidingWords(400, 4));
        Pairs const ordinary = pairOf(randomWords(400, 4));
        race(state, {attackCase(colliding, ordinary, 40)}, 1);
    });
    // Units that have the same low bits, so that they share their place in many a table.
    addCase("compare/attack_units", [](auto& state) {
        Pairs slow(1);
        for (char16_t unit = 0x100; slow[0].first.size() < 500; unit += 0x80)
            slow[0].first += static_cast<char16_t>(unit ^ unit >> 3U);
        slow[0].second.assign(slow[0].first.rbegin(), slow[0].first.rend());
        Pairs const ordinary{{oneWord(500, 1), oneWord(500, 2)}};
        race(state, {attackCase(slow, ordinary, 40)}, 1);
    });
    addCase("component", [](auto& state) { race(state, {componentCase()}, 1); });
}

}  // namespace bench
