// Lines of a file.
#pragma once

#include <cstddef>
#include <exception>
#include <optional>
#include <string>
#include <string_view>

#include "near_text/input/text_codec.h"
#include "near_text/input/text_input.h"

namespace near_text {

struct Line {
    std::size_t number = 0;  // from 1
    std::string text;        // UTF-8 if it has no fault, and unless the file pretends to be UTF-8
    std::string fault;       // what could not be decoded; empty where there is nothing
    std::string_view end;    // "\n", "\r\n" or "\r"; of the last line it may be missing
};

// Lines one at a time, each as soon as it is complete. A line ends with a line feed or with
// carriage return and line feed, which are no part of it; the last may lack its end. Neither is a
// byte order mark ahead of the first. In a file that has a carriage return within its first line,
// or what would be, carriage returns alone end lines too, unless the file is a part; it is noted on
// standard error where there is a line feed within the first 64 KiB. Throws as TextInput, once all
// lines ahead of the fault are taken.
class LineReader {
public:
    // Of a line above `longest` bytes only so much is kept, cut between two characters.
    explicit LineReader(TextFile const& file, std::size_t longest = std::string::npos);

    // False at the end.
    bool next(Line& line);

    std::string const& name() const { return input_.name(); }

    // "FILE:LINE: ", of the line that was read last.
    std::string place() const;

    // How much of the file the lines so far are, from 0 to 1; nothing where its size is not known.
    std::optional<double> share() const;

private:
    void chooseLineEnd();
    bool refill();
    bool takeFeed();
    void append(std::string& text, std::string_view bytes) const;
    void cut(std::string& text) const;

    TextInput input_;
    std::size_t longest_;
    std::size_t number_ = 0;
    std::string buffer_;
    std::size_t position_ = 0;   // in the buffer
    std::string_view lineEnds_;  // once they are chosen
    std::exception_ptr fault_;   // behind the buffer
};

// Whether it is valid UTF-8 without a NUL.
bool isText(std::string_view text);

// Throws NotText when the line has a fault, is not valid UTF-8 or contains a NUL.
void requireText(Line const& line);

// A line as units. Throws NotText when it is not valid UTF-8 or contains a NUL.
std::u16string lineUnits(std::string_view line);
std::u16string lineUnits(Line const& line);  // also when it has a fault

}  // namespace near_text
