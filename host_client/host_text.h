// The host's view of 16-bit units, and back. Nothing is copied.
#pragma once

#include <string_view>

namespace host_client {

inline unsigned short* hostUnits(char16_t const* units) {
    // The host's records hold a plain pointer; the add-in never writes through it.
    return reinterpret_cast<unsigned short*>(const_cast<char16_t*>(units));
}

inline std::u16string_view fromHost(unsigned short const* units, std::size_t length) {
    return {reinterpret_cast<char16_t const*>(units), length};
}

// Up to the terminating zero; null gives the empty text.
inline std::u16string_view fromHost(unsigned short const* units) {
    return units == nullptr ? std::u16string_view{} : reinterpret_cast<char16_t const*>(units);
}

}  // namespace host_client
