// The program's input: files, or standard input under the name "-".
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace near_text {

constexpr std::string_view kStandardInput = "-";

// A file's name for messages.
std::string shownName(std::string const& file);

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

std::string readWhole(std::string const& file);

struct Line {
    std::size_t number = 0;  // from 1
    std::string text;
};

// Lines one at a time, each as soon as it is complete. A line ends with a line feed or with
// carriage return and line feed, which are no part of it; the last may lack its end. A byte order
// mark ahead of the first line is no part of it either.
class LineReader {
public:
    // Of a line above `longest` bytes only so much is kept, cut between two characters.
    explicit LineReader(std::string const& file, std::size_t longest = std::string::npos,
                        int wakeDescriptor = -1);

    // False at the end. A line that is unfinished when the reader is woken is dropped.
    bool next(Line& line);

    // "FILE:LINE: ", of the line that was read last.
    std::string place() const;

private:
    bool refill();
    void append(std::string& text, std::string_view bytes) const;

    Input input;
    std::size_t longest;
    std::size_t number = 0;
    std::string buffer;
    std::size_t position = 0;  // in `buffer`
};

// A line as units. Throws NotText when it is not valid UTF-8 or holds a NUL.
std::u16string lineUnits(std::string_view line);

// Nothing where the input has no end that is known beforehand.
std::optional<std::size_t> countLines(std::string const& file);

}  // namespace near_text
