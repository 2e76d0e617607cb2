// What the hash of words depends on besides the words.
//
// Words can be chosen to collide under a key that is known, and the library has nothing secret: it
// keeps no state and asks the system for nothing. So a key can be made of all texts that the words
// come from. It is known only when the last unit is written, and with any word that is changed then
// it is another one.
#pragma once

#include <cstdint>
#include <span>

#include "compare/utf16_string.h"

namespace comparer {

struct HashKey {
    std::uint64_t first = 0x9E3779B97F4A7C15;
    std::uint64_t second = 0xD1342543DE82EF95;
};

// Reads every unit. Nobody can tell what a change of one unit does to the key without trying it.
HashKey keyOf(std::span<Utf16View const> texts);

}  // namespace comparer
