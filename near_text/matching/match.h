// A match of a text, and which of a text's matches are wanted.
#pragma once

#include <cstddef>
#include <limits>
#include <vector>

namespace near_text {

struct Match {
    unsigned long index;  // the add-in's, in the whole list
    // The highest percentage, for short and long entries alike, at which the add-in still finds it.
    int percent;
    unsigned long distance;
    unsigned long limit;  // at the percentage that was asked for
};

struct Wanted {
    static constexpr std::size_t kAll = std::numeric_limits<std::size_t>::max();

    std::size_t most = kAll;   // so many of the nearest
    bool isBestAlone = false;  // the nearest, and those as near

    bool isAll() const { return most == kAll && !isBestAlone; }
};

// Nearest first; those equally near in the order of the list.
void sortByNearness(std::vector<Match>& matches);

void keepWanted(std::vector<Match>& matches, Wanted wanted);

}  // namespace near_text
