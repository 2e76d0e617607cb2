#include "stand_in_host/text_codec.h"

#include <utf8.h>

#include <iterator>

namespace stand_in_host {

NotUtf8::NotUtf8(std::size_t byteNumber)
    : NotText("not valid UTF-8 at byte " + std::to_string(byteNumber)), byte(byteNumber) {}

std::u16string toUnits(std::string_view utf8Text) {
    auto const invalid = utf8::find_invalid(utf8Text.begin(), utf8Text.end());
    if (invalid != utf8Text.end()) {
        throw NotUtf8(static_cast<std::size_t>(invalid - utf8Text.begin()) + 1);
    }
    std::u16string units;
    utf8::utf8to16(utf8Text.begin(), utf8Text.end(), std::back_inserter(units));
    return units;
}

std::string toUtf8(std::u16string_view units) {
    constexpr utf8::uint32_t kReplacement = 0xFFFD;
    std::string text;
    for (std::size_t i = 0; i < units.size(); ++i) {
        bool const isLead = utf8::internal::is_lead_surrogate(units[i]);
        bool const isTrail = utf8::internal::is_trail_surrogate(units[i]);
        if (!isLead && !isTrail) {
            utf8::append(units[i], std::back_inserter(text));
        } else if (isLead && i + 1 < units.size() &&
                   utf8::internal::is_trail_surrogate(units[i + 1])) {
            utf8::utf16to8(&units[i], &units[i] + 2, std::back_inserter(text));
            ++i;
        } else {
            utf8::append(kReplacement, std::back_inserter(text));
        }
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
