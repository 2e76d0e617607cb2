// Matches that are mutual: the entry is among the best matches of the text, and the text is among
// the best matches of the entry. So the mutual matches are those that two runs for the best have in
// common, one in each direction. Ties stay on both sides.
//
// A text that failed takes no part, as if its line were blank. Where texts are cut they take part
// as they are then, and so does an entry on the way back.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "near_text/matching/known_pairs.h"
#include "near_text/output/progress.h"
#include "near_text/run/matchers.h"

namespace near_text {

class MutualMatches {
public:
    // Of the rows that `readRow` gives, all of which it keeps. The matchers find the best of each
    // text among `entries`. Pairs that are rejected are none in either direction. Throws as
    // `readRow`, as Matchers, and Interrupted.
    MutualMatches(std::function<bool(TextRow& row)> const& readRow, Preparer const& preparer,
                  Matchers& matchers, EntryList const& entries, KnownPairs const& decisions);

    // The rows once more, in their order. False at the end.
    bool next(TextRow& row);

    // Throws Refused where that became of the row.
    std::vector<Match> const& of(TextRow const& row) const;

private:
    struct Text {
        TextRow row;
        std::size_t line;  // of the row
        std::vector<Match> matches;
        std::string failure;
    };

    void findBest(Matchers& matchers, Preparer const& preparer, KnownPairs const& decisions,
                  Progress& progress);
    void keepMutual(Matchers const& matchers, Preparer const& preparer, EntryList const& entries,
                    KnownPairs const& decisions, Progress& progress);

    std::vector<Text> texts_;
    std::size_t handedOut_ = 0;
};

}  // namespace near_text
