#include "stand_in_host/text_codec.h"

#include "stand_in_host/code_points.h"

namespace stand_in_host {

NotUtf8::NotUtf8(std::size_t byteNumber)
    : NotText("not valid UTF-8 at byte " + std::to_string(byteNumber)), byte(byteNumber) {}

void requireUtf8(std::string_view text) {
    for (std::size_t i = 0; i < text.size();) {
        std::size_t const start = i;
        if (nextCodePoint(text, i) < 0) throw NotUtf8(start + 1);
    }
}

std::u16string toUnits(std::string_view utf8) {
    std::u16string units;
    units.reserve(utf8.size());
    for (std::size_t i = 0; i < utf8.size();) {
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

unsigned short* hostUnits(char16_t const* units) {
    // The host's records hold a plain pointer; the add-in never writes through it.
    return reinterpret_cast<unsigned short*>(const_cast<char16_t*>(units));
}

std::u16string_view fromHost(unsigned short const* units, std::size_t length) {
    return {reinterpret_cast<char16_t const*>(units), length};
}

std::u16string_view fromHost(unsigned short const* units) {
    return units == nullptr ? std::u16string_view{} : reinterpret_cast<char16_t const*>(units);
}

}  // namespace stand_in_host
