// Walks through a text from one section end to the next, a stretch at a time, at the speed of
// memory.
#pragma once

#include "search/pstring_ref.h"

// What lies between two section ends, with or without a word in it.
struct Stretch {
    unsigned short const* text;
    unsigned long units;      // that may be read
    unsigned long wordUnits;  // of them, those that are not whitespace
    unsigned long length;     // the section's length: one more than `units` behind a section end
};

class StretchReader {
public:
    // The text of `input` is not copied. Whitespace is tested before the separator, so a separator
    // that is whitespace separates nothing; NUL ends a section whatever the separator is.
    StretchReader(PStringRef<unsigned short> const& input, unsigned short separator);

    // Reads the next stretch. False when there is none; the text behind the last section end is
    // one, be it empty.
    bool next(Stretch& stretch);

private:
    // Moves `position` to the next section end, or the end of the text, and returns how many units
    // of whitespace it passed.
    unsigned long passToSectionEnd();

    unsigned short const* position;
    unsigned short const* end;
    unsigned short separator;
    unsigned long opening = 0;  // 1 behind a section end: the unit that ended the section counts
    bool isDone = false;
};
