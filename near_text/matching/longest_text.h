// The longest text that the add-in takes.
#pragma once

#include <cstddef>
#include <string>

namespace near_text {

inline constexpr std::size_t kMostUnits = 1000;

// Cuts a text that is longer at the last whitespace that leaves no more, or else between two
// characters. False where there was nothing to cut.
bool truncate(std::u16string& text);

}  // namespace near_text
