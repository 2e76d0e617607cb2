// What can be told of a text without copying its words.
#pragma once

struct TextShape {
    unsigned short const* text;
    unsigned long length;         // as given, in units
    unsigned long units = 0;      // up to the first NUL: what lies behind it holds no words
    unsigned long surplus = 0;    // whitespace beyond the first unit of each run
    unsigned long wordUnits = 0;  // units that are not whitespace
    unsigned long words = 0;

    // `given` may be null when `givenLength` is 0. The text is not copied and must outlive the
    // shape.
    TextShape(unsigned short const* given, unsigned long givenLength);

    // The length that the text would have if every run of whitespace were one unit long.
    unsigned long effectiveLength() const { return length - surplus; }
};
