// What the program says to people: lines on standard error, and text fit for them.
#pragma once

#include <string>

namespace near_text {

// A message on standard error, of one line.
void complain(std::string const& message);

// That it ran out. Takes none.
void complainOfMemory() noexcept;

// Text for eyes, on one line: control characters become spaces.
std::string onOneLine(std::string text);

}  // namespace near_text
