// The bag distance: how far apart two texts are at the least, whatever the order of their units.
//
// An edit takes one unit out, puts one in, or both. So the edit distance of two strings is at least
// the number of units that the first has and the second lacks, counted with repeats and wherever
// they stand, and at least the number that the second has and the first lacks: the bag distance is
// the greater of the two (Bartolini, Ciaccia and Patella, "String matching with metric trees using
// an approximate distance", SPIRE 2002, LNCS 2476).
//
// Here it bounds the distance of what is left of two texts once their words have cancelled, and is
// taken before any word is cut:
//
//  - A word that both sides hold takes the same units out of both, and changes neither number.
//  - A word that goes from the second side alone (a repeated or an excluded one) makes that side
//    lack more of the first, never less: what the whole text lacks, what is left of it lacks too.
//  - The second number is the second side's length less the first side's and plus the first number.
//    Only words that stay or cancel count in that length, each of them once: whoever uses it must
//    know that no word goes from the second side alone, or leave the units of such words out.
//
// Units are counted in 256 buckets. Two units that share one can hide a difference and never make
// one, and so can whitespace on the second side: the bound gets lower and stays a bound.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>

#include "compare/unit_lanes.h"
#include "compare/utf16_string.h"

namespace comparer {

// Of the units of `first`, those that `second` lacks: at least so many. Neither has 2^15 units or
// more. Counts both texts in full: the reference for the class below, and faster for a single
// comparison.
unsigned long missingUnits(Utf16View first, Utf16View second);

// The units of one side, counted once for many others.
class UnitHistogram {
public:
    // The longest side, in units: a byte counts every sixteenth of them.
    static constexpr unsigned long kMaxUnits = 4000;

    // Adds a word that counts, on the side that is counted; kMaxUnits in all, at most.
    void add(Utf16View word);

    // To be called when all words are added. Puts those buckets first that the other sides are
    // likely to lack units of, as far as `samples` of them tell, of at most kMaxUnits in all;
    // without any they keep their order. Finds `rarest` as well.
    void orderBy(std::span<Utf16View const> samples);

    // Units added.
    unsigned long size() const { return size_; }

    // Of the units added, those that `other` lacks: at least so many. Stops counting when they are
    // more than `enough`, or cannot become more. `other` has at most kMaxUnits.
    unsigned long missingIn(Utf16View other, unsigned long enough) const;

    // Of the units added, one whose bucket is rarest in the samples; nothing when none was added,
    // or only such as share the bucket of NUL.
    std::optional<unsigned short> rarest() const { return rarest_; }

private:
    static constexpr unsigned kBuckets = 256;
    static constexpr unsigned kGroup = 4;  // buckets counted in one walk over the other side
    static constexpr unsigned kMaxGroups = 12;

    struct Group {
        std::array<ByteLanes, kGroup> buckets{};  // each in all lanes
        std::array<std::uint32_t, kGroup> counts{};
        unsigned long countedFromHere = 0;  // in this group and those behind it
    };

    std::array<std::uint16_t, kBuckets> counts_{};
    std::array<unsigned short, kBuckets> lastOf_{};  // by bucket: the last unit that was added
    unsigned long size_ = 0;
    std::array<Group, kMaxGroups> groups_;
    unsigned groupCount_ = 0;
    std::optional<unsigned short> rarest_;  // since `orderBy`
};

}  // namespace comparer
