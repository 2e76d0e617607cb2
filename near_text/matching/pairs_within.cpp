#include "near_text/matching/pairs_within.h"

namespace near_text {

Indices pairsUnder(Matcher& matcher, Percentages percentages, unsigned long index, Indices found) {
    std::erase_if(found, [&](unsigned long other) {
        return other == index || (other < index && matcher.finds(percentages, other, index));
    });
    return found;
}

}  // namespace near_text
