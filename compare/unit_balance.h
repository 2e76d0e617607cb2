// The units of one side, counted, against those of another text: a bound on a distance that costs
// one look at the text.
//
// An edit takes one unit out, puts one in, or both. So the distance of two strings is at least the
// number of units that the first has and the second lacks, counted with repeats and wherever they
// stand, and at least the number that the second has beyond the first.
//
// A word that both sides hold takes the same units out of both and so leaves these numbers alone:
// they may be taken before any word is cut. A word that goes from the second side alone (a repeated
// or an excluded one) makes that side lack more of the first, never less: units missing from the
// whole text are missing from what is left of it. The other way about, such a word counts as
// surplus and is none: the surplus is a bound only less the units of words that go so.
//
// Units are folded into a few counters. Two units in one counter can hide a difference and never
// make one, so the bound gets lower and stays a bound.
#pragma once

#include <array>
#include <cstdint>

class UnitBalance {
public:
    // The most units that the counted side may have.
    static constexpr unsigned long kMostUnits = 65535;

    // Adds a word of the side that is counted.
    void add(unsigned short const* text, unsigned long length) {
        for (unsigned long i = 0; i < length; ++i)
            ++counts[fold(text[i])];
        units += length;
    }

    // Units of the counted side.
    unsigned long total() const { return units; }

    // Units of the counted side that `text` lacks, at least so many. `text` may hold whitespace:
    // that too can only lower the number.
    unsigned long missingIn(unsigned short const* text, unsigned long length) const {
        auto left = counts;
        unsigned long missing = units;
        for (unsigned long i = 0; i < length; ++i) {
            std::uint16_t& counter = left[fold(text[i])];
            unsigned const found = counter != 0 ? 1 : 0;
            counter = static_cast<std::uint16_t>(counter - found);
            missing -= found;
        }
        return missing;
    }

private:
    static constexpr unsigned kCounters = 128;

    // Puts Cyrillic letters where Latin text has none: the small ones among the control characters,
    // the capitals among the small Latin ones.
    static constexpr unsigned fold(unsigned short unit) {
        constexpr unsigned kShift = 20;
        return (unit + kShift * (unit >> 8U)) % kCounters;
    }

    std::array<std::uint16_t, kCounters> counts{};
    unsigned long units = 0;
};
