// Texts to measure with: entries of a file, or made ones with a realistic spread of words.
#pragma once

#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace bench {

// The entries that the environment's NEAR_TEXT_ENTRIES names, a UTF-8 file of one entry a line, or
// made ones. Whatever `count`, the first entries are the same; a file that is too short is gone
// through again, its entries unchanged.
std::vector<std::u16string> entries(std::size_t count);

// Entries joined by `;`, which none of them holds.
std::u16string join(std::vector<std::u16string> const& entries);

// A text of `length` units out of Latin or Cyrillic words; texts of different seeds are unlike.
std::u16string text(std::size_t length, bool isCyrillic, unsigned seed);

// The text with one unit in `every` replaced by another one of the same text, whitespace apart.
std::u16string mistyped(std::u16string text, std::size_t every, unsigned seed);

}  // namespace bench
