// Entries lie by the number of their units, so that for most texts a stretch of them is left out
// without a look. Of the others:
//
//   64 entries    limit, units   too many or too few for every one     all left out
//   16 entries    16 counters    plane by plane, 16 entries at once    most left out
//   each left     64 counters    and its own limit                     the rest left out
#include "near_text/matching/index/entry_index.h"

#include <algorithm>
#include <bit>
#include <limits>

#include "near_text/matching/index/distinct_words.h"
#include "reference/whitespace.h"

namespace near_text {

using comparer::ByteLanes;
using comparer::kByteLanes;

// What a search takes for the text: up to the first NUL, unless no word stands before it.
struct SearchedSection {
    std::u16string_view units;
    std::uint32_t length;
};

namespace {

std::vector<std::uint64_t> wordUnits(std::u16string_view list) {
    std::vector<std::uint64_t> frequencies(std::numeric_limits<char16_t>::max() + std::size_t{1});
    for (char16_t const unit : list)
        ++frequencies[unit];
    for (std::size_t unit = 0; unit < frequencies.size(); ++unit) {
        bool const isOfWord = unit > 0 && !reference::isWhitespace(static_cast<char16_t>(unit));
        if (!isOfWord) frequencies[unit] = 0;
    }
    return frequencies;
}

SearchedSection searchedSection(std::u16string_view text) {
    for (std::size_t begin = 0; begin <= text.size();) {
        std::u16string_view const section = text.substr(begin, text.find(u'\0', begin) - begin);
        std::size_t const length = section.size() + (begin > 0 ? 1 : 0);
        if (reference::holdsWord(section)) return {section, static_cast<std::uint32_t>(length)};
        begin += section.size() + 1;
    }
    return {{}, 0};
}

// row[i] becomes row[from[i].index].
template <class Row, class Places>
void reorder(std::vector<Row>& rows, Places const& from) {
    std::vector<bool> isDone(rows.size());
    for (std::size_t start = 0; start < rows.size(); ++start) {
        Row const first = rows[start];
        for (std::size_t at = start; !isDone[at];) {
            isDone[at] = true;
            std::size_t const source = from[at].index;
            rows[at] = source == start ? first : rows[source];
            at = source;
        }
    }
}

}  // namespace

struct EntryIndex::Query {
    SearchedSection section;
    CountedUnits units;
    std::array<ByteLanes, kCoarseCounters> coarse;  // each counter in all lanes
    std::vector<std::uint64_t> found;               // a bit for each index

    // How many units of the text an entry may lack of those that are counted, if it has a number of
    // units between these two; less than 0 if that alone is too far.
    std::int64_t room(std::int64_t leastUnits, std::int64_t mostUnits, unsigned long limit) const {
        std::int64_t const total = units.total;
        auto const most = static_cast<std::int64_t>(limit);
        if (total - mostUnits > most) return -1;
        return most - std::max<std::int64_t>(0, leastUnits - total) - units.notInList;
    }
};

EntryIndex::EntryIndex(EntryList const& list, reference::ExcludedWords const& excludedWords)
    : excluded_(excludedWords),
      unitCounters_(wordUnits(list.dictionary)),
      coarseCounters_(unitCounters_.loads(), kCoarseCounters) {
    countEntries(list);
    addUp();
    makeBlocks();
}

void EntryIndex::countEntries(EntryList const& list) {
    places_.reserve(list.entries.size());
    fine_.reserve(list.entries.size());
    std::vector<std::u16string_view> words;
    for (std::uint32_t index = 0; index < list.entries.size(); ++index) {
        distinctWords(list.units(index), excluded_, words);
        CountedUnits const counted = unitCounters_.count(words);
        std::size_t const length =
            list.units(index).size() + (list.isBehindSeparator(index) ? 1 : 0);
        places_.push_back({counted.total, static_cast<std::uint32_t>(length), index});
        fine_.push_back(counted.counters);
    }
    std::sort(places_.begin(), places_.end(), [](Place const& a, Place const& b) {
        return a.units != b.units ? a.units < b.units : a.length < b.length;
    });
    reorder(fine_, places_);
}

void EntryIndex::addUp() {
    coarseLanes_.resize((fine_.size() + kByteLanes - 1) / kByteLanes);
    for (std::size_t position = 0; position < fine_.size(); ++position) {
        auto const sums = coarse(fine_[position]);
        for (std::size_t i = 0; i < kCoarseCounters; ++i)
            coarseLanes_[position / kByteLanes][i][position % kByteLanes] = sums[i];
    }
}

void EntryIndex::makeBlocks() {
    for (std::size_t begin = 0; begin < places_.size(); begin += kBlock) {
        std::size_t const end = std::min(begin + kBlock, places_.size());
        Block block{places_[begin].units, places_[end - 1].units, places_[begin].length, 0};
        for (std::size_t i = begin; i < end; ++i) {
            block.shortest = std::min(block.shortest, places_[i].length);
            block.longest = std::max(block.longest, places_[i].length);
        }
        blocks_.push_back(block);
    }
}

std::array<std::uint8_t, EntryIndex::kCoarseCounters> EntryIndex::coarse(
    FineCounters const& counters) const {
    // One more for the counters that no unit goes into.
    std::array<unsigned, kCoarseCounters + 1> sums{};
    for (std::size_t i = 0; i < kUnitCounters; ++i)
        sums[coarseCounters_.of[i]] += counters[i];
    std::array<std::uint8_t, kCoarseCounters> saturated{};
    for (std::size_t i = 0; i < kCoarseCounters; ++i)
        saturated[i] = static_cast<std::uint8_t>(std::min(sums[i], 255U));
    return saturated;
}

EntryIndex::Query EntryIndex::queryFor(std::u16string_view text) const {
    Query query{searchedSection(text), {}, {}, {}};
    query.found.resize((places_.size() + 63) / 64);
    std::vector<std::u16string_view> words;
    distinctWords(query.section.units, excluded_, words);
    query.units = unitCounters_.count(words);
    auto const sums = coarse(query.units.counters);
    std::transform(sums.begin(), sums.end(), query.coarse.begin(), ByteLanes::filledWith);
    return query;
}

std::vector<Indices> EntryIndex::candidates(std::span<std::u16string_view const> texts,
                                            SearchLimits const& limits) const {
    std::vector<Query> queries;
    queries.reserve(texts.size());
    for (std::u16string_view const text : texts)
        queries.push_back(queryFor(text));
    // So much stays in the processor's cache until all texts are done with it.
    constexpr std::size_t kBlocksInCache = 32;
    for (std::size_t begin = 0; begin < blocks_.size(); begin += kBlocksInCache) {
        std::size_t const end = std::min(begin + kBlocksInCache, blocks_.size());
        for (Query& query : queries) {
            if (query.section.units.empty()) continue;
            for (std::size_t block = begin; block < end; ++block)
                scan(block, limits, query);
        }
    }
    std::vector<Indices> all;
    all.reserve(texts.size());
    for (Query& query : queries)
        all.push_back(listed(query.found));
    return all;
}

void EntryIndex::scan(std::size_t number, SearchLimits const& limits, Query& query) const {
    Block const& block = blocks_[number];
    unsigned long const limit = limits.highest(block.shortest, block.longest, query.section.length);
    std::int64_t const room = query.room(block.leastUnits, block.mostUnits, limit);
    if (room < 0) return;
    auto const roomInLane =
        ByteLanes::filledWith(static_cast<std::uint8_t>(std::min<std::int64_t>(room, 255)));
    std::size_t const end = std::min((number + 1) * kBlock, places_.size());
    for (std::size_t position = number * kBlock; position < end; position += kByteLanes) {
        CoarseCounters const& entries = coarseLanes_[position / kByteLanes];
        ByteLanes missing{};
        for (std::size_t i = 0; i < kCoarseCounters; ++i)
            missing = saturatingSum(
                missing, saturatingDifference(query.coarse[i], ByteLanes::load(entries[i].data())));
        ByteLanes const isWithin = saturatingDifference(missing, roomInLane) == ByteLanes();
        for (unsigned left = bitsOf(isWithin); left != 0; left &= left - 1) {
            std::size_t const entry = position + static_cast<std::size_t>(std::countr_zero(left));
            if (entry >= end) break;
            // Without a branch, which at a low percentage could go either way.
            std::uint64_t const bit = mayMatch(entry, limits, query) ? 1 : 0;
            std::uint32_t const index = places_[entry].index;
            query.found[index / 64] |= bit << (index % 64);
        }
    }
}

bool EntryIndex::mayMatch(std::size_t position, SearchLimits const& limits,
                          Query const& query) const {
    Place const& entry = places_[position];
    unsigned long const limit = limits.limit(entry.length, query.section.length);
    ByteLanes missing{};
    for (std::size_t i = 0; i < kUnitCounters; i += kByteLanes) {
        auto const wanted = ByteLanes::load(&query.units.counters[i]);
        auto const found = ByteLanes::load(&fine_[position][i]);
        missing = saturatingSum(missing, saturatingDifference(wanted, found));
    }
    return sumOf(missing) <= query.room(entry.units, entry.units, limit);
}

Indices EntryIndex::listed(std::vector<std::uint64_t> const& found) {
    std::size_t count = 0;
    for (std::uint64_t const bits : found)
        count += static_cast<std::size_t>(std::popcount(bits));
    Indices indices;
    indices.reserve(count);
    for (std::size_t i = 0; i < found.size(); ++i) {
        for (std::uint64_t left = found[i]; left != 0; left &= left - 1)
            indices.push_back(i * 64 + static_cast<unsigned>(std::countr_zero(left)));
    }
    return indices;
}

}  // namespace near_text
