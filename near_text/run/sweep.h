// What is found at several percentages, counted: by texts among entries, or among themselves.
//
// At a higher percentage nothing is found that is not found at a lower one, so each text is
// searched for in the whole list at the first step, and then, from one to the next, among what is
// left. For the mutual matches the texts are kept, and each entry that was among the best is
// searched for among them, in the same way.
#pragma once

#include <mutex>
#include <string>
#include <vector>

#include "near_text/matching/known_pairs.h"
#include "near_text/matching/steps.h"
#include "near_text/run/matchers.h"

namespace near_text {

// Of some matches.
struct MatchCount {
    std::size_t none = 0, one = 0, several = 0;  // texts that have so many
    std::size_t matches = 0;
    std::size_t known = 0;       // among the pairs
    std::size_t textsRight = 0;  // that have a match among the pairs
};

using StepCounts = std::vector<MatchCount>;

struct SweepCounts {
    StepCounts all, best, mutual;
};

class Sweep {
public:
    // The pairs are the caller's.
    Sweep(Steps const& steps, KnownPairs const& pairs);

    // All three say whether anything is found at the first step; the first two from any number of
    // threads, each with a matcher that keeps all matches. Throw Refused.
    bool add(Matcher& matcher, TextRow const& row, std::u16string const& units);
    // An entry of the list, among the others.
    bool addWithin(Matcher& matcher, EntryList const& list, unsigned long index);

    // Of the texts that were added. Throws as WayBack.
    void countMutual(Matchers const& matchers, EntryList const& entries);

    SweepCounts const& counts() const { return counts_; }

private:
    struct Text {
        std::size_t line;
        std::string name;  // that the pairs have for it
        std::u16string units;
        BestMatches best;
    };

    Steps const steps_;
    KnownPairs const& pairs_;
    std::mutex mutex_;
    SweepCounts counts_;
    std::vector<Text> texts_;  // where there are pairs
};

}  // namespace near_text
