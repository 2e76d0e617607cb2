// What the program says to people: lines on standard error, and text fit for them.
#pragma once

#include <string>

namespace near_text {

// Control characters, as file names may hold, are those of terminals, of lines and of the direction
// of writing.

// A message on standard error, of one line; control characters are shown by their codes. The middle
// of a very long one, as an argument may make it, is left out.
void complain(std::string const& message);

// The same without waiting for whoever reads it, or for a thread that does.
void complainAtOnce(char const* message) noexcept;

// That it ran out. Takes none.
void complainOfMemory() noexcept;

// Text for eyes, on one line: each control character becomes a space.
std::string onOneLine(std::string const& text);

}  // namespace near_text
