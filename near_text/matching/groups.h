// Groups that pairs join things into.
#pragma once

#include <cstddef>
#include <vector>

namespace near_text {

class Groups {
public:
    // Of things numbered from 0, each alone at first.
    explicit Groups(std::size_t count);

    void join(std::size_t first, std::size_t second);

    // Those of two and more, in the order of their first members, members ascending.
    std::vector<std::vector<std::size_t>> joined();

private:
    std::size_t headOf(std::size_t member);

    // Each member leads, over members with lower numbers, to the head of its group, its lowest.
    std::vector<std::size_t> towardsHead_;
};

}  // namespace near_text
