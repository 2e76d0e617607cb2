// The program's standard output. Nothing is lost in silence: a write that fails throws.
#pragma once

#include <chrono>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "near_text/output/encoder.h"

namespace near_text {

// Whoever read the output has closed it, as head does: no error, but nothing is left to do.
class BrokenPipe : public std::runtime_error {
public:
    BrokenPipe() : std::runtime_error("nobody reads the output") {}
};

// Files that are opened later do not take the place of a standard stream that was closed from the
// start; reading or writing such a stream fails.
void holdStandardStreams();

// "1 line", "7 lines".
std::string shownLines(std::size_t count);

// Of a run, with their output handed over; from any thread.
void tellLinesDone(std::size_t count);
// What is said when a signal ends the program: after how many of those lines, if all that came of
// them was written.
std::string interruptedText();

// One at a time.
class Output {
public:
    // In UTF-8 unless an encoding is named. Throws std::runtime_error when there is none so called.
    explicit Output(std::string encodingName = {});
    ~Output();
    Output(Output const&) = delete;
    Output& operator=(Output const&) = delete;

    // From any number of threads. Throws NotText where `text` could not be written.
    void requireEncodable(std::string_view text) const;
    // Empties those that could not be written. Gives the reason for the first of them, or nothing.
    std::string dropUnencodable(std::vector<std::string>& cells) const;

    // Text that ends with a line feed. Throws NotText, and as `flush`.
    void write(std::string_view text);
    // Throws std::runtime_error, BrokenPipe among them, and Interrupted when a signal came and
    // nobody takes the output. No line is cut that could be left whole.
    void flush();

    // So many have been written, by all outputs.
    static std::size_t writtenBytes();
    // From any thread: writes what is finished, and nothing can be written any more. Waits no
    // longer than `patience` for a thread that is writing.
    static void close(std::chrono::milliseconds patience) noexcept;

private:
    void flushWaiting();
    void writeLines();
    void forget();
    void writeOut(std::size_t begin, std::size_t end);
    std::size_t cutBytes(std::size_t end) const;

    std::string waiting_;
    std::vector<std::size_t> lineEnds_;  // in `waiting_`
    std::string encoding_;               // empty for UTF-8
    std::optional<Encoder> encoder_;
    std::size_t mostAtOnce_;
};

}  // namespace near_text
