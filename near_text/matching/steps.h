// What a text finds at several percentages, step by step: each finds nothing that the one before it
// does not find.
#pragma once

#include <functional>
#include <string_view>
#include <vector>

#include "near_text/matching/matches.h"

namespace near_text {

using Steps = std::vector<Percentages>;

// Calls `see` with what `text` finds at each step. `found`, ascending, is what it finds at the
// first.
void atEachStep(Matcher& matcher, std::u16string_view text, Steps const& steps, Indices found,
                std::function<void(std::size_t step, Indices const& found)> const& see);

// A match, and the steps at which it is among the best of its text: all from the first to the last.
// It may begin to be so, where a nearer one is held to a percentage that grows while its own stays.
struct BestMatch {
    unsigned long index;
    std::size_t first, last;
};

// Those of one text, by their indices.
class BestMatches {
public:
    // Of one step after the other; ascending.
    void add(std::size_t step, Indices const& best);

    // Null where that one is never among them.
    BestMatch const* find(unsigned long index) const;

    std::vector<BestMatch> const& all() const { return matches_; }

private:
    std::vector<BestMatch> matches_;
};

// Of a text, by a matcher that keeps what is best at any of the steps, and asks at the first.
// Throws Refused.
BestMatches bestMatches(Matcher& matcher, std::u16string_view text, Steps const& steps,
                        Matcher::IsRejected const& isRejected = {});

// The best of `found`, some of the matches; both ascending.
Indices bestOf(std::vector<Match> const& matches, Indices const& found);

}  // namespace near_text
