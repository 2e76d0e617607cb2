#include "near_text/matching/steps.h"

#include <algorithm>

namespace near_text {

namespace {

bool isBefore(BestMatch const& match, unsigned long index) {
    return match.index < index;
}

}  // namespace

void atEachStep(Matcher& matcher, std::u16string_view text, Steps const& steps, Indices found,
                std::function<void(std::size_t step, Indices const& found)> const& see) {
    for (std::size_t step = 0; step < steps.size(); ++step) {
        if (step > 0 && !found.empty()) found = matcher.search.findAmong(text, steps[step], found);
        see(step, found);
    }
}

void BestMatches::add(std::size_t step, Indices const& best) {
    auto const known = static_cast<std::ptrdiff_t>(matches_.size());
    for (unsigned long const index : best) {
        auto const end = matches_.begin() + known;
        auto const match = std::lower_bound(matches_.begin(), end, index, isBefore);
        if (match != end && match->index == index) {
            match->last = step;
        } else {
            matches_.push_back({index, step, step});
        }
    }
    std::inplace_merge(matches_.begin(), matches_.begin() + known, matches_.end(),
                       [](BestMatch const& a, BestMatch const& b) { return a.index < b.index; });
}

BestMatch const* BestMatches::find(unsigned long index) const {
    auto const match = std::lower_bound(matches_.begin(), matches_.end(), index, isBefore);
    return match != matches_.end() && match->index == index ? &*match : nullptr;
}

BestMatches bestMatches(Matcher& matcher, std::u16string_view text, Steps const& steps,
                        Matcher::IsRejected const& isRejected) {
    std::vector<Match> const matches = matcher.matches(text, isRejected);
    BestMatches best;
    atEachStep(
        matcher, text, steps, indicesOf(matches),
        [&](std::size_t step, Indices const& found) { best.add(step, bestOf(matches, found)); });
    return best;
}

Indices bestOf(std::vector<Match> const& matches, Indices const& found) {
    Indices best;
    int nearest = 0;
    auto match = matches.begin();
    for (unsigned long const index : found) {
        while (match->index != index)
            ++match;
        if (match->percent > nearest) best.clear();
        nearest = std::max(nearest, match->percent);
        if (match->percent == nearest) best.push_back(index);
    }
    return best;
}

}  // namespace near_text
