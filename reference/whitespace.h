// The units that part words. No other unit does, no-break and other wide spaces included. A host
// has no part in the add-in's own test, and what is worked out to check the add-in must not lean on
// it.
#pragma once

#include <algorithm>
#include <string_view>

namespace reference {

constexpr bool isWhitespace(char16_t unit) {
    return unit == u'\t' || unit == u'\n' || unit == u'\r' || unit == u' ';
}

inline bool holdsWord(std::u16string_view text) {
    return std::any_of(text.begin(), text.end(),
                       [](char16_t unit) { return unit != 0 && !isWhitespace(unit); });
}

}  // namespace reference
