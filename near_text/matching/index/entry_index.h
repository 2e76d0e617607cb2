// Which entries of a list can match a text at all, judged by how many of each unit they have: the
// add-in need not be asked about any other. No entry that the add-in would find is ever missing.
//
// Why that holds. What the add-in holds against the limit is the edit distance of what is left of
// the text and of the entry when the excluded words have gone, repeats have gone, and the words
// that both hold have gone. An edit takes a unit out, puts one in, or does both. So the distance is
// at least the number of units that the text's left-over has and the entry's lacks, counted with
// repeats and wherever they stand; and at least the number that the entry's has and the text's
// lacks. A word that goes from both sides takes the same units out of both and leaves every
// difference of counts as it is, so the differences can be taken before words are held against each
// other. Where either number is above the limit of the pair, the entry cannot match.
//
//   - Many units share a counter. Differences in one counter may cancel; none can arise.
//   - A counter stops at 255. Two numbers that are cut off at the same point lie no further apart
//     than before.
//   - The second number is not counted: the text having T units and the entry E, it is the first
//     number and E - T. Both totals are exact, so a first number that is too low only ever makes
//     the second one too low.
//   - Where one limit serves several entries it is the highest of theirs.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "compare/unit_lanes.h"
#include "near_text/matching/entry_list.h"
#include "near_text/matching/index/search_limits.h"
#include "near_text/matching/index/unit_counters.h"
#include "reference/explanation.h"

namespace near_text {

class EntryIndex {
public:
    // Keeps 92 bytes an entry, and nothing of the list. The excluded words are the caller's and
    // outlive the index.
    EntryIndex(EntryList const& list, reference::ExcludedWords const& excludedWords);

    // The entries that may match, of each text. Threads may ask at the same time. Several texts at
    // once are faster where the list is long.
    std::vector<Indices> candidates(std::span<std::u16string_view const> texts,
                                    SearchLimits const& limits) const;
    Indices candidates(std::u16string_view text, SearchLimits const& limits) const {
        return std::move(candidates({&text, 1}, limits)[0]);
    }

private:
    // Two rounds: coarse counters, of which sixteen entries' lie together, then all counters of
    // those entries that the first round leaves.
    static constexpr std::size_t kCoarseCounters = 16;
    using FineCounters = std::array<std::uint8_t, kUnitCounters>;
    using CoarseCounters =
        std::array<std::array<std::uint8_t, comparer::kByteLanes>, kCoarseCounters>;

    struct Place {
        std::uint32_t units;
        std::uint32_t length;  // as the add-in counts
        std::uint32_t index;   // in the list
    };
    // Neighbours that are left out together, or get one limit for the first round.
    static constexpr std::size_t kBlock = 64;
    struct Block {
        std::uint32_t leastUnits;
        std::uint32_t mostUnits;
        std::uint32_t shortest;
        std::uint32_t longest;
    };
    struct Query;

    void countEntries(EntryList const& list);
    void addUp();
    void makeBlocks();
    Query queryFor(std::u16string_view text) const;
    std::array<std::uint8_t, kCoarseCounters> coarse(FineCounters const& counters) const;
    void scan(std::size_t number, SearchLimits const& limits, Query& query) const;
    bool mayMatch(std::size_t position, SearchLimits const& limits, Query const& query) const;
    static Indices listed(std::vector<std::uint64_t> const& found);

    reference::ExcludedWords const& excluded_;
    UnitCounters unitCounters_;
    Shares coarseCounters_;  // of the fine ones
    // All by position: entries lie by units, then by length.
    std::vector<Place> places_;
    std::vector<FineCounters> fine_;
    std::vector<CoarseCounters> coarseLanes_;
    std::vector<Block> blocks_;
};

}  // namespace near_text
