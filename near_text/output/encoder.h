// What is written, in the encoding that was asked for.
#pragma once

#include <string>
#include <string_view>

#include "near_text/input/converter.h"
#include "near_text/input/text_codec.h"

namespace near_text {

// A character that the encoding of the output lacks.
class NotEncodable : public NotText {
public:
    using NotText::NotText;
};

// UTF-8 to the encoding of the output. UTF-16 begins with a byte order mark.
class Encoder {
public:
    // Throws as openConverter.
    explicit Encoder(std::string const& encoding);

    // The next part of the output. Throws NotEncodable, and NotUtf8 where the part is not UTF-8;
    // such a part counts as not written.
    std::string encoded(std::string_view utf8);

private:
    std::string encoding_;
    Converter converter_;
};

}  // namespace near_text
