// The hash of a word of two strides a, b is the folded product of a and b, each with its part of
// the key; so for any b there is one a that makes the one factor what it should be, and the other
// is 1.
#include "bench/colliding_words.h"

#include <cstring>
#include <functional>
#include <random>
#include <set>
#include <stdexcept>

#include "compare/word_list.h"
#include "host_client/host_text.h"

namespace bench {

using comparer::HashKey;
using comparer::kStride;

namespace {

constexpr std::uint32_t kSharedHalf = 0x5EED5EED;

std::uint64_t hashOfWord(std::u16string const& word) {
    return comparer::hashOf({host_client::hostUnits(word.data()), word.size()}, HashKey());
}

bool isWord(std::u16string const& word) {
    return word.find_first_of(std::u16string_view(u" \t\n\r;\0", 6)) == word.npos;
}

// Calls `make` until there are so many different words for which `isWanted`.
template <class Make, class IsWanted>
std::vector<std::u16string> collect(std::size_t count, Make const& make, IsWanted const& isWanted) {
    std::set<std::u16string> seen;
    std::vector<std::u16string> words;
    while (words.size() < count) {
        auto const word = make();
        if (isWord(word) && isWanted(word) && seen.insert(word).second) words.push_back(word);
    }
    return words;
}

auto randomWord(std::size_t units) {
    return [units, engine = std::mt19937_64(1)]() mutable {
        std::u16string word;
        while (word.size() < units)
            word += static_cast<char16_t>(engine());
        return word;
    };
}

std::u16string hashedTo(std::uint64_t hash) {
    std::u16string word(2 * kStride, u'\0');
    std::uint64_t const a = hash ^ HashKey().first;
    std::uint64_t const b = 1 ^ word.size() ^ HashKey().second;
    std::memcpy(word.data(), &a, sizeof a);
    std::memcpy(word.data() + kStride, &b, sizeof b);
    return word;
}

}  // namespace

std::vector<std::u16string> randomWords(std::size_t count, std::size_t units) {
    auto make = randomWord(units);
    auto const isAny = [](auto const&) { return true; };
    return collect(count, std::ref(make), isAny);
}

std::vector<std::u16string> collidingWords(std::size_t count, std::size_t units) {
    if (units != 2 * kStride) {
        auto make = randomWord(units);
        return collect(
            count, [&] { return make(); },
            [](auto const& word) { return hashOfWord(word) % 4096 == 77; });
    }
    std::uint32_t high = 0;
    constexpr std::uint32_t kSpread = 0x9E3779B1;  // odd: over all first halves
    return collect(
        count, [&] { return hashedTo(std::uint64_t{high += kSpread} << 32U | kSharedHalf); },
        [](auto const& word) {
            if (static_cast<std::uint32_t>(hashOfWord(word)) == kSharedHalf) return true;
            throw std::logic_error("the hash is another one: no words that collide");
        });
}

}  // namespace bench
