#include "near_text/matching/groups.h"

#include <algorithm>
#include <numeric>

namespace near_text {

Groups::Groups(std::size_t count) : towardsHead_(count) {
    std::iota(towardsHead_.begin(), towardsHead_.end(), std::size_t{0});
}

void Groups::join(std::size_t first, std::size_t second) {
    auto const [low, high] = std::minmax({headOf(first), headOf(second)});
    towardsHead_[high] = low;
}

std::vector<std::vector<std::size_t>> Groups::joined() {
    std::vector<std::vector<std::size_t>> groups(towardsHead_.size());
    for (std::size_t i = 0; i < towardsHead_.size(); ++i)
        groups[headOf(i)].push_back(i);
    std::erase_if(groups, [](std::vector<std::size_t> const& group) { return group.size() < 2; });
    return groups;
}

std::size_t Groups::headOf(std::size_t member) {
    while (towardsHead_[member] != member)
        member = towardsHead_[member] = towardsHead_[towardsHead_[member]];
    return member;
}

}  // namespace near_text
