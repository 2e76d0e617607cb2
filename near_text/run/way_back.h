// The way back of matches that are to be mutual: which texts are the best of an entry. It is a
// search like any other: the entry is the text, and the texts are the list, in the order of their
// lines. Nearness, which counts a unit more behind a separator, is each direction's own.
//
// An entry that is too long to be searched for has no match, unless texts are cut.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "near_text/matching/steps.h"
#include "near_text/output/progress.h"
#include "near_text/run/matchers.h"

namespace near_text {

class WayBack {
public:
    // Searches for the entries `found`, which may name one more than once, among as many texts as
    // `count` says, with what those of the matchers are searched with at the first step. `unitsOf`
    // gives a text as it is searched for, nothing where it is to take no part. `before` is the
    // share of the work that is done. What is rejected is no match. Throws as Matchers, and
    // Interrupted.
    WayBack(Matchers const& matchers, EntryList const& entries, Indices found, std::size_t count,
            std::function<std::u16string(std::size_t number)> const& unitsOf, Steps const& steps,
            Progress& progress, double before = 0,
            std::function<bool(unsigned long entry, std::size_t text)> const& isRejected = {});

    // The steps at which the text is among the best of an entry that was found; null where it never
    // is.
    BestMatch const* stepsOf(unsigned long entry, std::size_t text) const;

private:
    Indices found_;                    // ascending, each once
    std::vector<BestMatches> bestOf_;  // of each
    Indices indices_;                  // in the list of the texts, by their numbers
};

}  // namespace near_text
