// The list of indices that a search answers with.
#pragma once

#include <algorithm>
#include <limits>
#include <ranges>

// The units of ascending indices in decimal, the comma or the terminator behind each included.
template <std::ranges::random_access_range Indices>
unsigned long unitsOfList(Indices const& indices) {
    auto const count = static_cast<unsigned long>(std::ranges::size(indices));
    unsigned long units = 2 * count;
    // Each number from a power of ten on has one digit more.
    constexpr unsigned long kLastPower = std::numeric_limits<unsigned long>::max() / 10;
    for (unsigned long power = 10;; power *= 10) {
        auto const from = std::ranges::lower_bound(indices, power);
        auto const longer = static_cast<unsigned long>(std::ranges::end(indices) - from);
        units += longer;
        if (longer == 0 || power > kLastPower) return units;
    }
}
