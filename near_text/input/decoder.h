// The encodings of files. Inside, text is UTF-8: bytes of a file are decoded as they come in.
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "near_text/input/converter.h"
#include "near_text/input/encoding_guess.h"

namespace near_text {

// Bytes in pieces of any size to UTF-8. Each piece gives all characters that are complete.
class Decoder {
public:
    // What replaces bytes that are not a character in the encoding. No UTF-8 holds it. From
    // a file in UTF-8 itself, bytes pass as they are.
    static constexpr char kNoCharacter = '\xFF';

    // Without an encoding, a byte order mark of UTF-8, UTF-16 or UTF-32 decides, and UTF-8 is the
    // default.
    // With one, such a mark still wins. The mark is no part of the text. UTF-16 without a mark is
    // little-endian unless its bytes say otherwise. Throws as openConverter.
    //
    // `option`, with an encoding behind it, reads this file in that, for messages.
    explicit Decoder(std::string const& encoding, std::string const& option = "--encoding");

    // Appends. Throws std::runtime_error when neither the caller nor a mark gave the encoding and
    // the first bytes look like another one than UTF-8; it names the option that reads them.
    void decode(std::string_view bytes, std::string& utf8);
    // At the end of the bytes.
    void finish(std::string& utf8);

    // The same where only later bytes look so, when lines may have been taken and answered, or
    // where UTF-8 is read as an encoding of bytes: once, else empty.
    std::string takeHint() { return std::exchange(hint_, {}); }

    // Of a line (or text) that was decoded: what is wrong with it, or nothing. Empty for UTF-8,
    // which is checked where it is taken for text.
    std::string faultOf(std::string_view line) const;

private:
    void open(std::string const& encoding);
    void begin(std::string& utf8);
    void convert(std::string_view bytes, bool isLast, std::string& utf8);
    void guess(std::string_view bytes);
    void checkIsNotUtf8(std::string_view bytes, bool isLast);

    std::string encoding_;  // as given, then as the mark says
    Converter converter_;   // none for UTF-8
    std::string option_;
    bool isGuessed_;  // the encoding
    bool mayBeUtf8_;  // and is read as something else
    EncodingGuess guess_;
    bool hasAppended_ = false;
    std::string hint_;
    bool isBegun_ = false;
    std::string head_;        // until it is clear whether there is a mark
    std::u16string waiting_;  // half a surrogate pair at the most
};

}  // namespace near_text
