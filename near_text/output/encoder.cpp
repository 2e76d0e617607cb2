#include "near_text/output/encoder.h"

#include <unicode/ucnv.h>

#include <cstdio>

#include "near_text/text/code_points.h"

namespace near_text {

Encoder::Encoder(std::string const& name) : encoding_(name), converter_(openConverter(name)) {}

std::string Encoder::encoded(std::string_view utf8) {
    std::u16string const units = toUnits(utf8);
    std::string bytes;
    char16_t const* from = units.data();
    char16_t const* const end = from + units.size();
    UErrorCode status = U_BUFFER_OVERFLOW_ERROR;
    while (status == U_BUFFER_OVERFLOW_ERROR) {
        status = U_ZERO_ERROR;
        char block[1024];
        char* to = block;
        ucnv_fromUnicode(converter_.get(), &to, std::end(block), &from, end, nullptr, 0, &status);
        bytes.append(block, to);
    }
    if (U_SUCCESS(status)) return bytes;
    char16_t wrong[U16_MAX_LENGTH];
    std::int8_t length = std::size(wrong);
    UErrorCode ignored = U_ZERO_ERROR;
    ucnv_getInvalidUChars(converter_.get(), wrong, &length, &ignored);
    ucnv_resetFromUnicode(converter_.get());
    std::u16string_view const character(wrong, static_cast<std::size_t>(length));
    std::size_t position = 0;
    char number[16];
    std::snprintf(number, sizeof number, "U+%04X",
                  static_cast<unsigned>(nextCodePoint(character, position)));
    // Without the character, so that the message can be written in the same encoding.
    throw NotEncodable(encoding_ + " has no " + number);
}

}  // namespace near_text
