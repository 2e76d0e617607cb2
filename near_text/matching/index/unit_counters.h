// The units of words, counted into a few counters that distinguish the texts of one list.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace near_text {

constexpr std::size_t kUnitCounters = 64;

struct CountedUnits {
    std::array<std::uint8_t, kUnitCounters> counters{};  // 255 stands for that and more
    std::uint32_t total = 0;
    std::uint32_t notInList = 0;  // of the total, those in no counter: no text of the list has them
};

// Numbered weights shared out so that none of the shares gets much more than another: the heaviest
// first, each to the share that has least.
struct Shares {
    Shares(std::span<std::uint64_t const> weights, std::uint8_t shares);

    std::vector<std::uint8_t> of;  // the share of each weight; the number of shares for a weight 0
    std::vector<std::uint64_t> loads;
};

class UnitCounters {
public:
    // `frequencies` says of each 16-bit unit how often the list has it. A frequent unit gets a
    // counter to itself, the others share.
    explicit UnitCounters(std::span<std::uint64_t const> frequencies);

    CountedUnits count(std::span<std::u16string_view const> words) const;

    // How many units of the list go into each counter.
    std::vector<std::uint64_t> const& loads() const { return counters_.loads; }

private:
    Shares counters_;
};

}  // namespace near_text
