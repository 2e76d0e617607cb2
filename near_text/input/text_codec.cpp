#include "near_text/input/text_codec.h"

#include "near_text/text/code_points.h"

namespace near_text {

NotUtf8::NotUtf8(std::size_t byteNumber)
    : NotText("not valid UTF-8 at byte " + std::to_string(byteNumber)), byte(byteNumber) {}

void requireUtf8(std::string_view text) {
    for (std::size_t i = 0; i < text.size();) {
        std::size_t const start = i;
        if (nextCodePoint(text, i) < 0) throw NotUtf8(start + 1);
    }
}

std::u16string toUnits(std::string_view utf8) {
    std::u16string units(utf8.size(), u'\0');
    std::size_t ascii = 0;  // at the beginning, which most texts are
    for (; ascii < utf8.size() && static_cast<signed char>(utf8[ascii]) >= 0; ++ascii)
        units[ascii] = static_cast<char16_t>(utf8[ascii]);
    units.resize(ascii);
    for (std::size_t i = ascii; i < utf8.size();) {
        std::size_t const start = i;
        CodePoint const point = nextCodePoint(utf8, i);
        if (point < 0) throw NotUtf8(start + 1);
        append(units, point);
    }
    return units;
}

std::string toUtf8(std::u16string_view units) {
    constexpr CodePoint kReplacement = 0xFFFD;
    std::string text;
    text.reserve(units.size());
    for (std::size_t i = 0; i < units.size();) {
        CodePoint const point = nextCodePoint(units, i);
        append(text, isHalfPair(point) ? kReplacement : point);
    }
    return text;
}

}  // namespace near_text
