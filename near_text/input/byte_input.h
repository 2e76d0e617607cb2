// The program's input as bytes: files, or standard input under the name "-".
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace near_text {

constexpr std::string_view kStandardInput = "-";

// A file's name for messages.
std::string shownName(std::string const& file);

// Whether a file's name ends so, in letters of either case.
bool hasEnding(std::string_view file, std::string_view ending);

// "FILE:LINE: ", for messages.
std::string placeOf(std::string const& name, std::size_t line);

// Bytes as they come.
class ByteInput {
public:
    // Throws std::runtime_error when the file cannot be opened, and when it is the output or
    // where messages go, which would feed itself.
    explicit ByteInput(std::string const& file);
    ~ByteInput();
    ByteInput(ByteInput const&) = delete;
    ByteInput& operator=(ByteInput const&) = delete;

    // Waits for at least one byte; 0 is the end. Throws std::runtime_error, and Interrupted when a
    // signal came.
    std::size_t read(char* buffer, std::size_t size);

    std::string const& name() const { return name_; }  // for messages

    // Bytes that there were to read at the start. Nothing where the end is not known beforehand.
    std::optional<std::uintmax_t> size() const { return size_; }

private:
    int descriptor_;
    std::string name_;
    std::optional<std::uintmax_t> size_;
};

}  // namespace near_text
