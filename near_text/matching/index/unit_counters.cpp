#include "near_text/matching/index/unit_counters.h"

#include <algorithm>
#include <limits>

namespace near_text {

Shares::Shares(std::span<std::uint64_t const> weights, std::uint8_t shares)
    : of(weights.size(), shares), loads(shares) {
    std::vector<std::size_t> heaviestFirst;
    for (std::size_t i = 0; i < weights.size(); ++i) {
        if (weights[i] > 0) heaviestFirst.push_back(i);
    }
    std::stable_sort(heaviestFirst.begin(), heaviestFirst.end(),
                     [&](std::size_t a, std::size_t b) { return weights[a] > weights[b]; });
    for (std::size_t const i : heaviestFirst) {
        auto const least = std::min_element(loads.begin(), loads.end());
        *least += weights[i];
        of[i] = static_cast<std::uint8_t>(least - loads.begin());
    }
}

UnitCounters::UnitCounters(std::span<std::uint64_t const> frequencies)
    : counters_(frequencies, kUnitCounters) {}

CountedUnits UnitCounters::count(std::span<std::u16string_view const> words) const {
    CountedUnits counted;
    for (std::u16string_view const word : words) {
        counted.total += static_cast<std::uint32_t>(word.size());
        for (char16_t const unit : word) {
            std::uint8_t const counter = counters_.of[unit];
            if (counter == kUnitCounters) {
                ++counted.notInList;
            } else if (counted.counters[counter] < std::numeric_limits<std::uint8_t>::max()) {
                ++counted.counters[counter];
            }
        }
    }
    return counted;
}

}  // namespace near_text
