// The program's input: files, or standard input under the name "-".
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "near_text/input/encoding.h"

namespace near_text {

constexpr std::string_view kStandardInput = "-";

// A file's name for messages.
std::string shownName(std::string const& file);

// "FILE:LINE: ", for messages.
std::string placeOf(std::string const& name, std::size_t line);

// Bytes as they come.
class Input {
public:
    // Readiness of `wakeDescriptor`, when one is given, ends the input. Throws std::runtime_error
    // when the file cannot be opened.
    explicit Input(std::string const& file, int wakeDescriptor = -1);
    ~Input();
    Input(Input const&) = delete;
    Input& operator=(Input const&) = delete;

    // Waits for at least one byte; 0 is the end. Throws std::runtime_error.
    std::size_t read(char* buffer, std::size_t size);

    bool isWoken() const { return wasWoken; }

    std::string const& name() const { return fileName; }  // for messages

private:
    int descriptor;
    int wakeDescriptor;
    bool wasWoken = false;
    std::string fileName;
};

// A file of text and, unless it is UTF-8 or has a byte order mark, its encoding.
struct TextFile {
    TextFile(std::string fileName, std::string encodingName = {})
        : name(std::move(fileName)), encoding(std::move(encodingName)) {}

    std::string name;
    std::string encoding;
};

// A file's bytes as UTF-8, as they come. Throws std::runtime_error, with the file's name, for a
// file that looks like another encoding than UTF-8 while none is given, and for an unknown
// encoding.
class TextInput {
public:
    explicit TextInput(TextFile const& file, int wakeDescriptor = -1);

    // Waits and appends at least one character; false at the end, where it appends none.
    bool read(std::string& utf8);

    bool isWoken() const { return input.isWoken(); }
    std::string const& name() const { return input.name(); }
    std::string faultOf(std::string_view text) const { return decoder.faultOf(text); }

private:
    Input input;
    Decoder decoder;
    bool isEnded = false;
    std::string block;
};

// As UTF-8. Throws std::runtime_error, with the line where bytes are no character; those of a file
// that is UTF-8 already are not checked. Otherwise throws as TextInput.
std::string readWhole(TextFile const& file);

struct Line {
    std::size_t number = 0;  // from 1
    std::string text;        // UTF-8 if it has no fault, and unless the file pretends to be UTF-8
    std::string fault;       // what could not be decoded; empty where there is nothing
    bool hadReturn = false;  // ahead of its line feed
};

// Lines one at a time, each as soon as it is complete. A line ends with a line feed or with
// carriage return and line feed, which are no part of it; the last may lack its end. Neither is a
// byte order mark ahead of the first. Throws as TextInput.
class LineReader {
public:
    // Of a line above `longest` bytes only so much is kept, cut between two characters.
    explicit LineReader(TextFile const& file, std::size_t longest = std::string::npos,
                        int wakeDescriptor = -1);

    // False at the end. A line that is unfinished when the reader is woken is dropped.
    bool next(Line& line);

    bool isWoken() const { return input.isWoken(); }
    std::string const& name() const { return input.name(); }

    // "FILE:LINE: ", of the line that was read last.
    std::string place() const;

private:
    bool refill();
    void append(std::string& text, std::string_view bytes) const;

    TextInput input;
    std::size_t longest;
    std::size_t number = 0;
    std::string buffer;
    std::size_t position = 0;  // in `buffer`
};

// Throws NotText when the line has a fault, is not valid UTF-8 or contains a NUL.
void requireText(Line const& line);

// A line as units. Throws NotText when it is not valid UTF-8 or contains a NUL.
std::u16string lineUnits(std::string_view line);
std::u16string lineUnits(Line const& line);  // also when it has a fault

// Nothing where the input has no end that is known beforehand.
std::optional<std::size_t> countLines(TextFile const& file);

}  // namespace near_text
