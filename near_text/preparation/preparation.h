// What is done to texts on request before the add-in is asked, so that differences that a person
// does not count do not count there either.
//
// The order is fixed, whatever is chosen of it, and words that are to be dropped go last:
//
//   compose   canonical composition (NFC): a letter and its accent become one unit where Unicode
//             has one, so that they count as one
//   fold      Unicode's simple case folding, a code point for a code point
//   blank     each unit of a punctuation character becomes a blank, so words part at it; so does
//             every other blank of Unicode (no-break, em, ideographic ...), which the add-in takes
//             for part of a word; characters without a width become nothing
//
// Composing is first because folding knows composed letters, and what is canonically the same is
// the same afterwards only so. Where folding leaves something to compose, it is composed again. To
// prepare a text twice gives what preparing it once gives.
//
// Punctuation is what Unicode puts into the categories P: quotes, dashes, brackets, stops, and also
// # % & * @ / \ and _. Symbols distinguish things and stay: + < = > | ~ ^ ` $ and other currencies,
// signs of units and numbers (C++, 5 $, the numero sign).
//
// Half a surrogate pair and a NUL pass as they are. Any step may change the number of units.
#pragma once

#include <array>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "near_text/text/code_points.h"

namespace near_text {

struct Preparation {
    bool composes = false;
    bool foldsCase = false;
    bool blanksPunctuation = false;

    static constexpr Preparation whole();
    constexpr bool isNone() const;
};

// As an option of the command line.
struct PreparationStep {
    using Choice = bool Preparation::*;

    char const* option;
    Choice isChosen;
    char const* text;
};

inline constexpr PreparationStep kPreparationSteps[] = {
    {"-i,--fold-case", &Preparation::foldsCase,
     "Ignore the difference between capital and small letters"},
    {"--blank-punctuation", &Preparation::blanksPunctuation,
     "Treat punctuation characters, and every blank of Unicode, as blanks"},
    {"--compose", &Preparation::composes,
     "Treat a letter and its accents as the one character that they make (NFC)"},
};

constexpr Preparation Preparation::whole() {
    Preparation all;
    for (PreparationStep const& step : kPreparationSteps)
        all.*step.isChosen = true;
    return all;
}

constexpr bool Preparation::isNone() const {
    for (PreparationStep const& step : kPreparationSteps) {
        if (this->*step.isChosen) return false;
    }
    return true;
}

// A range of units of the text that was prepared: whole characters.
struct Origin {
    std::size_t begin, end;
};

class Preparer {
public:
    explicit Preparer(Preparation preparation);

    // From then on these words, prepared as texts are, go from each text, with the whitespace ahead
    // of them: it becomes what it would be if they had never stood there.
    void drop(std::u16string_view words);

    bool isIdle() const { return how_.isNone() && dropped_.empty(); }

    // From any number of threads at once. Throws std::runtime_error where there is something to
    // compose in a text of more than 700 million units.
    std::u16string prepared(std::u16string_view units) const;

    // The same, and where each unit of it comes from.
    std::u16string prepared(std::u16string_view units, std::vector<Origin>& origins) const;

private:
    // What becomes of a unit, where that is a unit whatever stands around it.
    struct Unit {
        char16_t prepared;
        bool isAlone;
    };
    Unit unitOf(char16_t unit) const;
    bool prepareUnits(std::u16string_view units, std::u16string& result) const;
    std::u16string prepareCodePoints(std::u16string_view units) const;
    std::u16string preparedWhole(std::u16string_view units) const;
    bool isPieceBegin(CodePoint point) const;
    std::vector<Origin> undropped(std::u16string_view text) const;

    static constexpr char16_t kTabled = 0x600;  // Latin, Greek, Cyrillic, Armenian, Hebrew

    Preparation how_;
    std::array<Unit, kTabled> tabled_;
    std::set<std::u16string, std::less<>> dropped_;
};

}  // namespace near_text
