// What a file looks like that is read as UTF-8 without anybody's having said that it is.
#pragma once

#include <string>
#include <string_view>

namespace near_text {

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
class EncodingGuess {
public:
    // The message for the user, with the option that reads such a file; empty as long as it may
    // be UTF-8.
    std::string const& hintAfter(std::string_view bytes);

private:
    std::string utf16Hint(std::string_view bytes);
    std::string bytesHint(std::string_view bytes);

    Nulls nulls_;                 // of a stretch of the file
    std::string tail_;            // that is not counted yet
    std::string sample_;          // what is beyond ASCII, a blank for all that stands between
    std::size_t characters_ = 0;  // beyond ASCII
    std::size_t strayBytes_ = 0;
    std::string told_;
};

}  // namespace near_text
