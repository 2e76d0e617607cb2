// Numbers the units of a text, in the order in which they come. All take the same few steps to be
// looked up, however they are chosen: a part of the unit leads to a page, the rest to its place
// there.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace comparer {

class UnitNumbers {
public:
    UnitNumbers() {
        pages_.reserve(kLikelyPages);
        pages_.emplace_back();  // of the units that have no other
    }

    void clear() {
        if (count_ == 0) return;
        pageOf_.fill(0);
        pages_.clear();
        pages_.emplace_back();
        count_ = 0;
    }

    // The unit's number; one more than there were when it is new.
    unsigned add(unsigned short unit) {
        Number& page = pageOf_[unit / kPageUnits];
        if (page == 0) {
            page = static_cast<Number>(pages_.size());
            pages_.emplace_back();
        }
        Number& number = pages_[page][unit % kPageUnits];
        if (number == 0) [[unlikely]]
            number = static_cast<Number>(++count_);
        return number;
    }

    // Different units; at most 65,535.
    unsigned count() const { return count_; }

    // From 1 to `count`; 0 for a unit that the text does not have.
    unsigned of(unsigned short unit) const {
        return pages_[pageOf_[unit / kPageUnits]][unit % kPageUnits];
    }

private:
    using Number = std::uint16_t;

    static constexpr unsigned kPageUnits = 64;
    static constexpr unsigned kPages = (1U << 16U) / kPageUnits;
    static constexpr unsigned kLikelyPages = 8;

    std::array<Number, kPages> pageOf_{};  // by the upper part of a unit
    std::vector<std::array<Number, kPageUnits>> pages_;
    unsigned count_ = 0;
};

}  // namespace comparer
