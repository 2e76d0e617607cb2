// The program's standard output. Nothing is lost in silence: a write that fails throws.
#pragma once

#include <string>
#include <string_view>

namespace near_text {

class Output {
public:
    // Both throw std::runtime_error.
    void write(std::string_view text);
    void flush();

private:
    std::string waiting;
};

// A message on standard error.
void complain(std::string const& message);

// Text for eyes, on one line: control characters become spaces.
std::string onOneLine(std::string text);

}  // namespace near_text
