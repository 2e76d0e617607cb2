// Between UTF-8, as files hold text, and the 16-bit units that the add-in compares.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace near_text {

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

}  // namespace near_text
