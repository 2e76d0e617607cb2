// Texts a code point at a time: ICU's macros as functions.
#pragma once

#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <string>
#include <string_view>

// The macros convert between integers as C does.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wsign-conversion"

namespace near_text {

using CodePoint = UChar32;

// The code point at `position`, which moves past it; negative if the bytes are not one.
inline CodePoint nextCodePoint(std::string_view utf8, std::size_t& position) {
    CodePoint point = 0;
    U8_NEXT(utf8.data(), position, utf8.size(), point);
    return point;
}

// Half a surrogate pair is a code point of its own.
inline CodePoint nextCodePoint(std::u16string_view units, std::size_t& position) {
    CodePoint point = 0;
    U16_NEXT(units.data(), position, units.size(), point);
    return point;
}

inline bool isHalfPair(CodePoint point) {
    return U_IS_SURROGATE(point);
}

// `point` is not half of a surrogate pair.
inline void append(std::string& utf8, CodePoint point) {
    std::size_t end = utf8.size();
    utf8.resize(end + U8_LENGTH(point));
    U8_APPEND_UNSAFE(utf8.data(), end, point);
}

inline void append(std::u16string& units, CodePoint point) {
    if (U_IS_BMP(point)) {
        units += static_cast<char16_t>(point);
    } else {
        units += static_cast<char16_t>(U16_LEAD(point));
        units += static_cast<char16_t>(U16_TRAIL(point));
    }
}

}  // namespace near_text

#pragma GCC diagnostic pop
