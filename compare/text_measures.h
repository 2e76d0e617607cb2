// What can be known of a text without copying its words.
#pragma once

#include "compare/unit_bits.h"
#include "compare/utf16_string.h"
#include "compare/white_space.h"

namespace comparer {

// As a test for `bitsWhere`.
struct IsNoWord {
    bool operator()(unsigned short unit) const { return unit == 0 || isWhiteSpaceUnit(unit); }
    template <WhiteSpaceLanes Lanes>
    Lanes operator()(Lanes units) const {
        return (units == Lanes()) | IsWhiteSpace()(units);
    }
};

struct TextMeasures {
    Utf16View text;                         // up to the first NUL: what lies behind holds no words
    unsigned long effectiveLength;          // all of it, with every run of whitespace as one unit
    unsigned long collapsedWhitespace = 0;  // units beyond the first of each run
    unsigned long wordUnits = 0;            // units that are not whitespace
    unsigned long words = 0;

    // Most short texts are one word, and known after one look.
    explicit TextMeasures(Utf16View whole) : text(whole), effectiveLength(whole.size()) {
        if (!whole.empty() && whole.size() <= kBlockUnits && bitsWhere(whole, IsNoWord()) == 0) {
            wordUnits = whole.size();
            words = 1;
        } else {
            measure();
        }
    }

private:
    void measure();
};

}  // namespace comparer
