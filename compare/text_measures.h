// What can be known of a text without copying its words.
#pragma once

#include "compare/utf16_string.h"

struct TextMeasures {
    Utf16View text;                         // up to the first NUL: what lies behind holds no words
    unsigned long effectiveLength;          // all of it, with every run of whitespace as one unit
    unsigned long collapsedWhitespace = 0;  // units beyond the first of each run
    unsigned long wordUnits = 0;            // units that are not whitespace
    unsigned long words = 0;

    explicit TextMeasures(Utf16View whole);
};
