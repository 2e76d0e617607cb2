// How a terminal shows the marks of a difference: what cancelled is dim, what is left is bold; of
// it, what has no partner in the other text is underlined, and what is replaced is reversed. That
// tells them apart without colours. Those are of the eight standard ones, which a terminal shows so
// that they can be read on its background.
#pragma once

#include <string>

#include "near_text/matching/difference.h"

namespace near_text {

// Whether standard output is a terminal that is to have colours, by what the environment says.
bool isColourTerminal();

// Texts for eyes, on one line, with the marks of the first and of the second text of a difference;
// with no marks where there are no spans. Without the sequences of the marks each is what onOneLine
// makes of it.
std::string firstMarked(std::string const& text, Spans const& spans);
std::string secondMarked(std::string const& text, Spans const& spans);

}  // namespace near_text
