// Numbers the units of a text, in the order in which they come. All take the same few steps to be
// looked up, however they are chosen: a part of the unit leads to a page, the rest to its place
// there.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace comparer {

inline constexpr unsigned kUnitsOfPage = 64;
template <class Number>
using UnitPage = std::array<Number, kUnitsOfPage>;

// Nothing is spent on pages that no unit is on.
template <unsigned kMost>
class PagesInPlace {
    static_assert(kMost < 256);

public:
    using value_type = UnitPage<std::uint8_t>;

    unsigned long size() const { return size_; }
    void reserve(unsigned long) {}
    void clear() { size_ = 0; }
    void emplace_back() { pages_[size_++].fill(0); }
    value_type& operator[](unsigned long index) { return pages_[index]; }
    value_type const& operator[](unsigned long index) const { return pages_[index]; }

private:
    std::array<value_type, kMost> pages_;
    unsigned long size_ = 0;
};

// `Pages` has room for a page for each different unit, and one more.
template <class Pages = std::vector<UnitPage<std::uint16_t>>>
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
        Number& page = pageOf_[unit / kUnitsOfPage];
        if (page == 0) {
            page = static_cast<Number>(pages_.size());
            pages_.emplace_back();
        }
        Number& number = pages_[page][unit % kUnitsOfPage];
        // Branch-free.
        count_ += number == 0 ? 1U : 0U;
        number = static_cast<Number>(number == 0 ? count_ : number);
        return number;
    }

    // Different units; at most 65,535.
    unsigned count() const { return count_; }

    // From 1 to `count`; 0 for a unit that the text does not have.
    unsigned of(unsigned short unit) const {
        return pages_[pageOf_[unit / kUnitsOfPage]][unit % kUnitsOfPage];
    }

private:
    using Number = typename Pages::value_type::value_type;

    static constexpr unsigned kPages = (1U << 16U) / kUnitsOfPage;
    static constexpr unsigned kLikelyPages = 8;

    std::array<Number, kPages> pageOf_{};  // by the upper part of a unit
    Pages pages_;
    unsigned count_ = 0;
};

}  // namespace comparer
