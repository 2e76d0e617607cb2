#include "near_text/run/sweep.h"

#include <algorithm>

#include "near_text/matching/pairs_within.h"
#include "near_text/output/progress.h"
#include "near_text/run/way_back.h"

namespace near_text {

namespace {

// One text's.
template <class IsKnown>
void add(MatchCount& count, Indices const& found, IsKnown const& isKnown) {
    ++(found.empty() ? count.none : found.size() == 1 ? count.one : count.several);
    auto const known = static_cast<std::size_t>(std::count_if(found.begin(), found.end(), isKnown));
    count.matches += found.size();
    count.known += known;
    if (known > 0) ++count.textsRight;
}

}  // namespace

Sweep::Sweep(Steps const& steps, KnownPairs const& pairs)
    : steps_(steps),
      pairs_(pairs),
      counts_{StepCounts(steps.size()), StepCounts(steps.size()), StepCounts(steps.size())} {}

bool Sweep::add(Matcher& matcher, TextRow const& row, std::u16string const& units) {
    std::vector<Match> const matches = matcher.matches(units);
    Text text = {row.number, pairs_.nameOf(row), {}, {}};
    auto const isKnown = [&](unsigned long index) { return pairs_.isAccepted(text.name, index); };
    atEachStep(matcher, units, steps_, indicesOf(matches),
               [&](std::size_t step, Indices const& found) {
                   Indices const best = bestOf(matches, found);
                   text.best.add(step, best);
                   std::lock_guard const lock(mutex_);
                   near_text::add(counts_.all[step], found, isKnown);
                   near_text::add(counts_.best[step], best, isKnown);
               });
    if (pairs_.size() > 0) {
        text.units = units;
        std::lock_guard const lock(mutex_);
        texts_.push_back(std::move(text));
    }
    return !matches.empty();
}

bool Sweep::addWithin(Matcher& matcher, EntryList const& list, unsigned long index) {
    std::u16string_view const units = list.units(index);
    bool isAnyFound = false;
    atEachStep(matcher, units, steps_, matcher.search.find(units, steps_.front()),
               [&](std::size_t step, Indices const& found) {
                   Indices pairs = pairsUnder(matcher, steps_[step], index, found);
                   matcher.leaveOut(units, pairs, step == 0);
                   isAnyFound |= !pairs.empty();
                   std::lock_guard const lock(mutex_);
                   near_text::add(counts_.all[step], pairs, [&](unsigned long other) {
                       return pairs_.isAcceptedWithin(index, other);
                   });
               });
    return isAnyFound;
}

void Sweep::countMutual(Matchers const& matchers, EntryList const& entries) {
    std::sort(texts_.begin(), texts_.end(),
              [](Text const& a, Text const& b) { return a.line < b.line; });
    Indices found;
    for (Text const& text : texts_) {
        for (BestMatch const& match : text.best.all())
            found.push_back(match.index);
    }
    Progress progress;
    WayBack const back(
        matchers, entries, found, texts_.size(),
        [&](std::size_t number) { return texts_[number].units; }, steps_, progress);
    for (std::size_t i = 0; i < texts_.size(); ++i) {
        std::vector<Indices> mutual(steps_.size());
        for (BestMatch const& there : texts_[i].best.all()) {
            BestMatch const* const here = back.stepsOf(there.index, i);
            if (here == nullptr) continue;
            std::size_t const last = std::min(there.last, here->last);
            for (std::size_t step = std::max(there.first, here->first); step <= last; ++step)
                mutual[step].push_back(there.index);
        }
        for (std::size_t step = 0; step < steps_.size(); ++step) {
            near_text::add(counts_.mutual[step], mutual[step], [&](unsigned long index) {
                return pairs_.isAccepted(texts_[i].name, index);
            });
        }
    }
}

}  // namespace near_text
