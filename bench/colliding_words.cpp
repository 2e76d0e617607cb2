// The hash of a word of two strides a, b is fold((fold((seed ^ a) * m) ^ b) * m), where fold mixes
// the high half into the low one. Each step can be undone: for any b and any result there is one a.
#include "bench/colliding_words.h"

#include <random>
#include <stdexcept>

#include "compare/word_list.h"
#include "host_client/host_text.h"

namespace bench {

namespace {

constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15;
constexpr std::uint64_t kSeed = 2 * kStride * kMultiplier;
constexpr std::uint32_t kSharedHalf = 0x5EED5EED;

constexpr std::uint64_t inverseOf(std::uint64_t odd) {
    std::uint64_t inverse = odd;  // right in the lowest three bits; each step doubles them
    for (int i = 0; i < 5; ++i)
        inverse *= 2 - odd * inverse;
    return inverse;
}

// What was folded and, before that, multiplied.
std::uint64_t undo(std::uint64_t hash) {
    return (hash ^ hash >> 32U) * inverseOf(kMultiplier);
}

}  // namespace

std::u16string collidingWords(std::size_t count) {
    std::mt19937_64 engine(1);
    std::u16string words;
    words.reserve(count * 9);
    for (std::uint64_t high = 0; count > 0; ++high) {
        std::uint64_t const b = engine();
        std::uint64_t const a = undo(undo(high << 32U | kSharedHalf) ^ b) ^ kSeed;
        std::u16string word(2 * kStride, u'\0');
        std::memcpy(word.data(), &a, sizeof a);
        std::memcpy(word.data() + kStride, &b, sizeof b);
        if (word.find_first_of(u" \t\n\r;") != word.npos || word.find(u'\0') != word.npos) continue;
        if (static_cast<std::uint32_t>(
                hashOf({host_client::hostUnits(word.data()), word.size()})) != kSharedHalf) {
            throw std::logic_error("the hash is another one: no words that collide");
        }
        if (!words.empty()) words += u' ';
        words += word;
        --count;
    }
    return words;
}

}  // namespace bench
