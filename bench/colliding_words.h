// Words that an attacker would choose, and others of the same form.
#pragma once

#include <string>
#include <vector>

namespace bench {

// Different words of so many units, none of which stands for a list's separator.
std::vector<std::u16string> randomWords(std::size_t count, std::size_t units);

// The same, whose places in the word list's table are all the same: for words of eight units in a
// table of any size, as all 32 bits are that it keeps of a hash; for others in one of up to 4096
// slots. Throws std::logic_error when the hash is no longer the one that is worked backwards here.
std::vector<std::u16string> collidingWords(std::size_t count, std::size_t units);

}  // namespace bench
