// The program's standard output. Nothing is lost in silence: a write that fails throws.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "near_text/input/encoding.h"

namespace near_text {

// Whoever read the output has closed it, as head does: no error, but nothing is left to do.
class NobodyReads : public std::runtime_error {
public:
    NobodyReads() : std::runtime_error("nobody reads the output") {}
};

// Files that are opened later do not take the place of a standard stream that was closed from the
// start; reading or writing such a stream fails.
void holdStandardStreams();

class Output {
public:
    // In UTF-8 unless an encoding is named. Throws std::runtime_error when there is none so called.
    explicit Output(std::string const& encodingName = {});

    // From any number of threads. Throws NotText where `text` could not be written.
    void requireEncodable(std::string_view text) const;

    // Both throw std::runtime_error, NobodyReads among them.
    void write(std::string_view text);
    void flush();

private:
    std::string waiting;
    std::string encoding;  // empty for UTF-8
    std::optional<Encoder> encoder;
};

}  // namespace near_text
