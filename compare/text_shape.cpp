#include "compare/text_shape.h"

#include "compare/white_space.h"

TextShape::TextShape(unsigned short const* given, unsigned long givenLength)
    : text(given), length(givenLength) {
    unsigned long whiteSpace = 0;
    unsigned long runs = 0;
    bool wasWhite = false;
    for (; units < length && text[units] != 0; ++units) {
        bool const isWhite = isWhiteSpaceUnit(text[units]);
        whiteSpace += isWhite ? 1 : 0;
        runs += isWhite && !wasWhite ? 1 : 0;
        words += wasWhite && !isWhite ? 1 : 0;
        wasWhite = isWhite;
    }
    if (units > 0 && !isWhiteSpaceUnit(text[0])) ++words;
    surplus = whiteSpace - runs;
    wordUnits = units - whiteSpace;
}
