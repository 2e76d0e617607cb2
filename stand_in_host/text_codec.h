// Between the user's UTF-8 and the add-in's 16-bit units.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace stand_in_host {

// What was read is not text that the add-in can be given.
class NotText : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Says at which byte (from 1) a text stops being UTF-8.
class NotUtf8 : public NotText {
public:
    explicit NotUtf8(std::size_t byteNumber);

    std::size_t byte;
};

// Both throw NotUtf8.
void requireUtf8(std::string_view text);
std::u16string toUnits(std::string_view utf8);

// Units that are half a surrogate pair become the replacement character.
std::string toUtf8(std::u16string_view units);

// The host's view of the same units, and back. Neither copies.
unsigned short* hostUnits(char16_t const* units);
std::u16string_view fromHost(unsigned short const* units, std::size_t length);
// Up to the terminating zero; null gives the empty text.
std::u16string_view fromHost(unsigned short const* units);

}  // namespace stand_in_host
