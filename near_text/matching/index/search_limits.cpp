#include "near_text/matching/index/search_limits.h"

#include <algorithm>

#include "reference/limit.h"

namespace near_text {

SearchLimits::Percentage::Percentage(unsigned long given) : percent_(given) {
    constexpr unsigned long kUsualLengths = 512;
    for (unsigned long length = 0; length < kUsualLengths; ++length)
        usual_.push_back(static_cast<std::uint32_t>(reference::limitFor(percent_, length)));
}

unsigned long SearchLimits::Percentage::limit(unsigned long length) const {
    return length < usual_.size() ? usual_[length] : reference::limitFor(percent_, length);
}

SearchLimits::SearchLimits(int lengthThreshold, int percentShort, int percentLong)
    : threshold_(static_cast<std::uint32_t>(lengthThreshold)),
      forShort_(static_cast<std::uint32_t>(percentShort)),
      forLong_(static_cast<std::uint32_t>(percentLong)) {}

unsigned long SearchLimits::limit(unsigned long entryLength, unsigned long textLength) const {
    return (entryLength > threshold_ ? forLong_ : forShort_)
        .limit(std::max(entryLength, textLength));
}

// Each percentage has its highest limit at the longest entry that it applies to.
unsigned long SearchLimits::highest(unsigned long shortest, unsigned long longest,
                                    unsigned long textLength) const {
    unsigned long const atLongest = limit(longest, textLength);
    bool const isBothPercentages = shortest <= threshold_ && threshold_ < longest;
    return isBothPercentages ? std::max(atLongest, limit(threshold_, textLength)) : atLongest;
}

}  // namespace near_text
