// The one answer to which units part words.
#pragma once

// Units 9 (tab), 10 (line feed), 13 (carriage return) and 32 (space), and no other: a no-break
// space or a form feed belongs to a word.
constexpr bool isWhiteSpaceUnit(unsigned short unit) {
    constexpr unsigned kFirst = 9;
    constexpr unsigned kLast = 32;
    constexpr unsigned kMask = 0x800013;  // bit (unit - 9) is set for each of the four
    unsigned const place = unsigned{unit} - kFirst;
    return place <= kLast - kFirst && ((kMask >> place) & 1U) != 0;
}
