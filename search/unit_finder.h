// Tells of parts of a text, one after the other, whether they hold a certain unit.
#pragma once

#include <bit>
#include <cassert>
#include <cstdint>

#include "compare/unit_bits.h"
#include "compare/utf16_string.h"

namespace comparer {

class UnitFinder {
public:
    // `text` outlives this.
    UnitFinder(Utf16View text, unsigned short unit)
        : text_(text), isUnit_{unit}, bits_(bitsWhere(text, isUnit_)) {}

    // `part` is one of the text; parts come in text order.
    bool isIn(Utf16View part) {
        auto const begin = static_cast<unsigned long>(part.data() - text_.data());
        unsigned long const end = begin + part.size();
        assert(block_ <= end && end <= text_.size());
        while (end - block_ > kBlockUnits) {
            if (bits_ != 0) found_ = endOfLast(bits_);
            block_ += kBlockUnits;
            bits_ = bitsWhere({text_.data() + block_, text_.size() - block_}, isUnit_);
        }
        std::uint64_t const before = bits_ & lowBits(end - block_);
        return (before != 0 ? endOfLast(before) : found_) > begin;
    }

private:
    struct IsUnit {
        unsigned short searched;

        bool operator()(unsigned short unit) const { return unit == searched; }
        UnitLanes operator()(UnitLanes units) const {
            return units == UnitLanes::filledWith(searched);
        }
    };

    unsigned long endOfLast(std::uint64_t bits) const {
        return block_ + kBlockUnits - static_cast<unsigned long>(std::countl_zero(bits));
    }

    Utf16View const text_;
    IsUnit const isUnit_;
    unsigned long block_ = 0;  // of 64 units, that is being looked at
    std::uint64_t bits_;       // where the unit is in it
    unsigned long found_ = 0;  // the end of the last one before the block, 0 if there is none
};

}  // namespace comparer
