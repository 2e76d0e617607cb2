// The encodings of files. Inside, text is UTF-8: bytes of a file are decoded as they come in, and
// on request what is written is encoded as it goes out.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "near_text/input/text_codec.h"

struct UConverter;

namespace near_text {

// Encodings are named as ICU knows them: case, hyphens and underscores do not count. Throws
// std::runtime_error, with examples, when there is none of that name.
struct CloseConverter {
    void operator()(UConverter* converter) const;
};
using Converter = std::unique_ptr<UConverter, CloseConverter>;
Converter openConverter(std::string const& encoding);

// NULs at even places and at odd ones.
struct Nulls {
    void count(std::string_view bytes);

    std::size_t places = 0, even = 0, odd = 0;
};

// What looks like another encoding than UTF-8, wherever in a file that shows first.
//
// UTF-16 shows by NULs at every other place, an encoding of bytes by more bytes that are no UTF-8
// than characters that are; Russian ones differ in their letters. A few stray bytes do not
// make it: they are for the line that holds them.
class Suspicion {
public:
    // The message for the user, with the option that reads such a file; empty as long as it may
    // be UTF-8.
    std::string const& hintAfter(std::string_view bytes);

private:
    std::string utf16Hint(std::string_view bytes);
    std::string bytesHint(std::string_view bytes);

    Nulls nulls;                 // of a stretch of the file
    std::string tail;            // that is not counted yet
    std::string sample;          // what is beyond ASCII, a blank for all that stands between
    std::size_t characters = 0;  // beyond ASCII
    std::size_t strayBytes = 0;
    std::string told;
};

// Bytes in pieces of any size to UTF-8. Each piece gives all characters that are complete.
class Decoder {
public:
    // What replaces bytes that are not a character in the encoding. No UTF-8 holds it. From
    // a file in UTF-8 itself, bytes pass as they are.
    static constexpr char kNoCharacter = '\xFF';

    // Without an encoding, a byte order mark of UTF-8 or UTF-16 decides, and UTF-8 is the default.
    // With one, such a mark still wins. The mark is no part of the text. UTF-16 without a mark is
    // little-endian unless its NULs say otherwise. Throws as openConverter.
    explicit Decoder(std::string const& encoding);

    // Appends. Throws std::runtime_error when neither the caller nor a mark gave the encoding and
    // the first bytes look like another one than UTF-8; it names the option that reads them.
    void decode(std::string_view bytes, std::string& utf8);
    // At the end of the bytes.
    void finish(std::string& utf8);

    // The same where only later bytes look so, when lines may have been taken and answered: once,
    // else empty.
    std::string takeHint() { return std::exchange(hint, {}); }

    // Of a line (or text) that was decoded: what is wrong with it, or nothing. Empty for UTF-8,
    // which is checked where it is taken for text.
    std::string faultOf(std::string_view line) const;

private:
    void begin(std::string& utf8);
    void convert(std::string_view bytes, bool isLast, std::string& utf8);

    std::string encoding;  // as given, then as the mark says
    Converter converter;   // none for UTF-8
    bool mayHaveMark;
    bool isSuspicious;  // while the encoding is a guess
    Suspicion suspicion;
    bool hasAppended = false;
    std::string hint;
    bool isBegun = false;
    std::string head;        // until it is clear whether there is a mark
    std::u16string waiting;  // half a surrogate pair at the most
};

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
    std::string encoding;
    Converter converter;
};

}  // namespace near_text
