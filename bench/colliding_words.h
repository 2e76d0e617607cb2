// Words that an attacker would choose.
#pragma once

#include <string>

namespace bench {

// `count` different words of eight units, a space between two, whose places in the word list's
// table are all the same: the low half of the hash. Throws std::logic_error when the hash is no
// longer the one that is worked backwards here.
std::u16string collidingWords(std::size_t count);

}  // namespace bench
