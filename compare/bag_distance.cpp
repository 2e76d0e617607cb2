// The other side is folded to bytes, a bucket for each unit, and these are counted sixteen at a
// time, four buckets in one walk:
//
//   other      h a m m e r   c l a w
//   == 'a'     . 1 . . . .   . . 1 .    subtracted from a sum of lanes, as all ones are -1
//
// The buckets that are most likely to lack units come first, so that most texts that are too far
// away are told after one walk or two.
#include "compare/bag_distance.h"

#include <algorithm>
#include <cassert>
#include <cstdint>

#include "compare/white_space.h"

namespace comparer {

namespace {

// Of Latin and of Cyrillic letters no two share a bucket.
constexpr int kFoldBits = 3;

constexpr std::uint8_t bucketOf(unsigned short unit) {
    return static_cast<std::uint8_t>((unit ^ unit >> kFoldBits) & 0xFF);
}

UnitLanes bucketsOf(UnitLanes units) {
    return (units ^ shiftedDown<kFoldBits>(units)) & UnitLanes::filledWith(0xFF);
}

ByteLanes loadBuckets(unsigned short const* units) {
    return packed(bucketsOf(UnitLanes::load(units)),
                  bucketsOf(UnitLanes::load(units + kUnitLanes)));
}

// Ones behind `count` zeros.
ByteLanes lanesFrom(unsigned long count) {
    static constexpr auto kMasks = [] {
        std::array<std::uint8_t, 2 * kByteLanes> masks{};
        std::fill(masks.begin() + kByteLanes, masks.end(), 0xFF);
        return masks;
    }();
    return ByteLanes::load(kMasks.data() + kByteLanes - count);
}

// Calls `use` with all buckets of a text, a vector at a time. The last one has the bucket of NUL,
// which no word holds, in the lanes that stand for nothing.
template <class Use>
void forBuckets(Utf16View text, Use&& use) {
    unsigned short const* at = text.data();
    for (unsigned long left = text.size() / kByteLanes; left > 0; --left, at += kByteLanes)
        use(loadBuckets(at));
    unsigned long const rest = text.size() % kByteLanes;
    if (rest == 0) return;
    if (text.size() >= kByteLanes) {
        use(loadBuckets(at + rest - kByteLanes) & lanesFrom(kByteLanes - rest));
    } else {
        unsigned short few[kByteLanes] = {};
        std::copy(text.begin(), text.end(), few);
        use(loadBuckets(few));
    }
}

}  // namespace

unsigned long missingUnits(Utf16View first, Utf16View second) {
    assert(std::max(first.size(), second.size()) <= INT16_MAX);
    std::array<std::int16_t, 256> surplus{};  // of the first over the second
    for (unsigned short const unit : first)
        ++surplus[bucketOf(unit)];
    for (unsigned short const unit : second)
        --surplus[bucketOf(unit)];
    for (unsigned short const white : kWhiteSpaceUnits)
        surplus[bucketOf(white)] = 0;
    int missing = 0;
    for (std::int16_t const units : surplus)
        missing += std::max<int>(units, 0);
    return static_cast<unsigned long>(missing);
}

void UnitHistogram::add(Utf16View word) {
    size_ += word.size();
    assert(size_ <= kMaxUnits);
    for (unsigned short const unit : word) {
        ++counts_[bucketOf(unit)];
        lastOf_[bucketOf(unit)] = unit;
    }
}

void UnitHistogram::orderBy(std::span<Utf16View const> samples) {
    std::array<std::uint16_t, kBuckets> seen{};
    unsigned long sampled = 1;
    for (Utf16View const sample : samples) {
        sampled += sample.size();
        for (unsigned short const unit : sample)
            ++seen[bucketOf(unit)];
    }
    assert(sampled <= kMaxUnits + 1);
    // By how many units more than a text of our own length is likely to have.
    struct Ranked {
        long expectedSurplus;
        std::uint8_t bucket;

        bool operator<(Ranked const& other) const {
            return expectedSurplus < other.expectedSurplus;
        }
    };
    Ranked ranked[kBuckets];
    unsigned count = 0;
    for (unsigned bucket = 1; bucket < kBuckets; ++bucket) {
        if (counts_[bucket] == 0) continue;
        if (!rarest_ || seen[bucket] < seen[bucketOf(*rarest_)]) rarest_ = lastOf_[bucket];
        auto const own = static_cast<long>(counts_[bucket] * sampled);
        ranked[count++] = {static_cast<long>(seen[bucket] * size_) - own,
                           static_cast<std::uint8_t>(bucket)};
    }
    if (!samples.empty()) std::sort(ranked, ranked + count);
    count = std::min(count, kMaxGroups * kGroup);
    groupCount_ = (count + kGroup - 1) / kGroup;
    for (unsigned i = 0; i < count; ++i) {
        Group& group = groups_[i / kGroup];
        group.buckets[i % kGroup] = ByteLanes::filledWith(ranked[i].bucket);
        group.counts[i % kGroup] = counts_[ranked[i].bucket];
    }
    unsigned long counted = 0;
    for (unsigned i = groupCount_; i-- > 0;) {
        for (std::uint32_t const own : groups_[i].counts)
            counted += own;
        groups_[i].countedFromHere = counted;
    }
}

unsigned long UnitHistogram::missingIn(Utf16View other, unsigned long enough) const {
    assert(other.size() <= kMaxUnits);
    if (groupCount_ == 0 || groups_[0].countedFromHere <= enough) return 0;
    std::array<ByteLanes, kMaxUnits / kByteLanes + 1> buckets;
    unsigned long vectors = 0;
    std::array<ByteLanes, kGroup> found{};
    auto const count = [&found](ByteLanes some, Group const& group) {
        for (unsigned k = 0; k < kGroup; ++k)
            found[k] = found[k] - (some == group.buckets[k]);
    };
    forBuckets(other, [&](ByteLanes some) {
        buckets[vectors++] = some;
        count(some, groups_[0]);
    });
    unsigned long missing = 0;
    for (unsigned i = 0;; ++i) {
        Group const& group = groups_[i];
        missing += excess(FourLanes::load(group.counts.data()), FourLanes::sumsOf(found));
        if (missing > enough || i + 1 == groupCount_ ||
            missing + groups_[i + 1].countedFromHere <= enough) {
            return missing;
        }
        found = {};
        for (unsigned long v = 0; v < vectors; ++v)
            count(buckets[v], groups_[i + 1]);
    }
}

}  // namespace comparer
