// What a file looks like, apart from what it is read as.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace near_text {

// The bytes of a file that no text of bytes has, by their places modulo 4: NULs, and what is next
// to them, which UTF-16 has as the upper halves of most alphabets.
struct Uppers {
    void count(std::string_view bytes);
    std::size_t even() const { return at[0] + at[2]; }
    std::size_t odd() const { return at[1] + at[3]; }

    std::size_t places = 0;
    std::array<std::size_t, 4> at{};
};

// What looks like another encoding than UTF-8, wherever in a file that shows first.
//
// UTF-16 and UTF-32 show by NULs and their like at every other place or two of four, what is no
// text by many elsewhere, an encoding of bytes by more bytes that are no UTF-8 than characters that
// are; Russian ones differ in their letters. A few stray bytes do not make it: they are for the
// line that holds them.
class EncodingGuess {
public:
    // `option`, with an encoding behind it, tells how to read the file, and no other.
    explicit EncodingGuess(std::string const& option) : option_(option) {}

    // Of a file that is read as UTF-8, though nobody has said that it is. The message for the user,
    // with the option that reads such a file; empty as long as it may be UTF-8.
    std::string const& hintAfter(std::string_view bytes);

    // Of one that is read as something else: whether it is UTF-8, once that is clear. ASCII is
    // either.
    std::optional<bool> isUtf8(std::string_view bytes, bool isLast);

    // How to have the file read as that.
    std::string adviceFor(std::string const& encoding) const;

private:
    void count(std::string_view bytes);
    std::string hintOf(std::string const& encoding) const;
    std::string byteEncodingHint() const;
    std::string unitsHint(std::string_view bytes);
    std::string binaryHint() const;
    std::string bytesHint(std::string_view bytes);

    std::string option_;
    Uppers uppers_;               // of a stretch of the file
    std::string tail_;            // that is not counted yet
    std::string sample_;          // what is beyond ASCII, a blank for all that stands between
    std::size_t characters_ = 0;  // beyond ASCII
    std::size_t strayBytes_ = 0;
    std::string told_;
};

}  // namespace near_text
