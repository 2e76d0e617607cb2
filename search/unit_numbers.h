// Numbers the units of a text. All take the same few steps to be looked up, however they are
// chosen.
#pragma once

#include <bit>
#include <cstdint>
#include <span>
#include <vector>

#include "compare/utf16_string.h"

namespace comparer {

class UnitNumbers {
public:
    // Of at most 65,535 different units.
    explicit UnitNumbers(std::span<Utf16View const> words) : there_(kPages), before_(kPages) {
        for (Utf16View const word : words) {
            for (unsigned short const unit : word)
                there_[unit / kPageUnits] |= std::uint64_t{1} << unit % kPageUnits;
        }
        for (unsigned page = 0; page < kPages; ++page) {
            before_[page] = count_;
            count_ = static_cast<unsigned short>(count_ + std::popcount(there_[page]));
        }
    }

    // Different units.
    unsigned short count() const { return count_; }

    // From 1 to `count`; 0 for a unit that the text does not have.
    unsigned short of(unsigned short unit) const {
        // The unit's own bit becomes the first.
        std::uint64_t const upTo = there_[unit / kPageUnits]
                                   << (kPageUnits - 1 - unit % kPageUnits);
        if (upTo >> (kPageUnits - 1) == 0) return 0;
        return static_cast<unsigned short>(before_[unit / kPageUnits] + std::popcount(upTo));
    }

private:
    static constexpr unsigned kPageUnits = 64;
    static constexpr unsigned kPages = (1U << 16U) / kPageUnits;

    std::vector<std::uint64_t> there_;    // a bit for each unit
    std::vector<unsigned short> before_;  // by page: units on those before
    unsigned short count_ = 0;
};

}  // namespace comparer
