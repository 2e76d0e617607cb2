// The limit of a search for each pair of lengths, which are counted as the add-in counts them.
#pragma once

#include <cstdint>
#include <vector>

namespace near_text {

class SearchLimits {
public:
    // As the add-in gets them; like it, this reads a negative number as one of 32 bits without a
    // sign.
    SearchLimits(int lengthThreshold, int percentShort, int percentLong);

    // The limit for an entry and a text of these lengths, in 16-bit units.
    unsigned long limit(unsigned long entryLength, unsigned long textLength) const;

    // The highest one for an entry that is no shorter and no longer than these.
    unsigned long highest(unsigned long shortest, unsigned long longest,
                          unsigned long textLength) const;

private:
    class Percentage {
    public:
        explicit Percentage(unsigned long given);

        unsigned long limit(unsigned long length) const;

    private:
        unsigned long percent_;
        std::vector<std::uint32_t> usual_;  // limits by length, as long as that is usual
    };

    unsigned long threshold_;
    Percentage forShort_;
    Percentage forLong_;
};

}  // namespace near_text
