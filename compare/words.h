// The words of a text: its runs of units that are not whitespace.
#pragma once

#include "compare/white_space.h"

// Calls `use(text, length)` for each word, in text order, repeats included. `text` may be null when
// `length` is 0. NUL is a unit like any other here.
template <class Use>
void forEachWord(unsigned short const* text, unsigned long length, Use&& use) {
    unsigned short const* const end = text + length;
    for (unsigned short const* at = text; at != end;) {
        if (isWhiteSpaceUnit(*at)) {
            ++at;
            continue;
        }
        unsigned short const* const start = at;
        at = findWhiteSpace(at, end);
        use(start, static_cast<unsigned long>(at - start));
    }
}
