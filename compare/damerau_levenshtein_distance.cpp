// The table-driven distance test and the scan of a list. Both stand beside the host's methods.
#include "compare/damerau_levenshtein_distance.h"

#include <algorithm>

#include "compare/limit.h"

using namespace comparer;

DamerauLevenshteinDistance::DamerauLevenshteinDistance() {
    for (unsigned long k = 0; k <= kMaxLength; ++k) {
        table_[k][0] = k;
        table_[0][k] = k;
    }
}

bool DamerauLevenshteinDistance::compareStrings(unsigned short const* first,
                                                unsigned long firstLength, unsigned long firstSize,
                                                unsigned short const* second,
                                                unsigned long secondLength,
                                                unsigned long secondSize, unsigned long percent) {
    if (firstLength == 0 && secondLength == 0) return true;
    // Nothing outside the table may be touched.
    if (firstLength > kMaxLength || secondLength > kMaxLength) return false;

    // A hair above the exact share, so that a share such as 0.9999999999999998 lets one edit
    // through.
    double const limit = Tolerance(percent).of(std::max(firstSize, secondSize)) + 1e-6;
    auto const isWithin = [limit](unsigned long distance) {
        return limit >= static_cast<double>(distance);
    };
    if (static_cast<double>(firstLength) > static_cast<double>(secondLength) + limit ||
        static_cast<double>(secondLength) > static_cast<double>(firstLength) + limit) {
        return false;
    }
    for (unsigned long i = 1; i <= firstLength; ++i) {
        bool isAlive = isWithin(i);
        for (unsigned long j = 1; j <= secondLength; ++j) {
            unsigned long const cost = first[i - 1] == second[j - 1] ? 0 : 1;
            unsigned long cell =
                std::min({table_[i - 1][j] + 1, table_[i][j - 1] + 1, table_[i - 1][j - 1] + cost});
            bool const isTransposed =
                i > 1 && j > 1 && first[i - 1] == second[j - 2] && first[i - 2] == second[j - 1];
            if (isTransposed) cell = std::min(cell, table_[i - 2][j - 2] + cost);
            table_[i][j] = cell;
            isAlive = isAlive || isWithin(cell);
        }
        // No later row holds less than the least of this one.
        if (!isAlive) return false;
    }
    return isWithin(table_[firstLength][secondLength]);
}

void DamerauLevenshteinDistance::serchDuplicates(
    std::vector<unsigned long>& matches, unsigned short const* text, unsigned long length,
    std::vector<Utf16String> const& list, unsigned long lengthThreshold, unsigned long percentShort,
    unsigned long percentLong, std::vector<Utf16String> const& exclusions) {
    for (unsigned long i = 0; i < list.size(); ++i) {
        Utf16String const& entry = list[i];
        unsigned long const percent = lengthThreshold < entry.size() ? percentLong : percentShort;
        if (wordInsansitiveCompareStrings(text, length, entry.data(), entry.size(), percent,
                                          exclusions)) {
            matches.push_back(i);
        }
    }
}
