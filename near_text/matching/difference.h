// How two texts differ, as marks on them as they are printed: what cancelled, what is left, and
// what an alignment of the left-overs inserts, deletes and replaces.
//
// The add-in compares texts as they are prepared; each unit of these is followed back to the
// characters of the printed text that it came from. A character has the mark of the unit of it that
// differs most, so half a surrogate pair marks the whole, and an accent its letter.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "near_text/matching/entry_list.h"
#include "near_text/preparation/preparation.h"
#include "reference/explanation.h"

namespace near_text {

// From what differs least to what differs most.
enum class Mark {
    Ignored,    // blanks, and words that count on neither side, or a second time
    Cancelled,  // a word of both sides
    Same,       // left, with its partner in the other side
    Extra,      // left, and in this side alone: to be deleted here, or inserted there
    Replaced,   // left, with another in its place
};

// Bytes of the printed text: whole characters.
struct Span {
    std::size_t begin, end;
    Mark mark;
};

// They cover the text in its order, without a gap; neighbours differ in their marks.
using Spans = std::vector<Span>;

// A printed text, with the way back to it from the units that are compared.
struct PrintedText {
    // Of UTF-8. Throws NotUtf8.
    PrintedText(std::string const& text, Preparer const& preparer);

    // As compared; a text that is searched for may be cut at its end.
    std::u16string units;
    std::vector<Origin> origins;  // of each unit, in bytes
    std::size_t length;           // in bytes
};

struct Difference {
    Spans first, second;
};

// `sides` are of the units of the two. Units marked Same are the same in both, in their order; as
// many are Replaced in the one as in the other; and with the Extra ones of both these are as many
// as the distance says. Only where a character is more than a unit may more be marked. Where the
// left-overs make a table of more than 16 million cells they are not aligned: what is left is
// Replaced.
Difference differenceOf(PrintedText const& first, PrintedText const& second,
                        reference::SideBySide const& sides);

// What is left of two sides, run together, in UTF-8.
struct LeftOvers {
    explicit LeftOvers(reference::SideBySide const& sides);

    // As of texts that cancelled nothing.
    Difference difference() const;

    std::string first, second;
};

}  // namespace near_text
