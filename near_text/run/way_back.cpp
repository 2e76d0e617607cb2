#include "near_text/run/way_back.h"

#include <algorithm>

#include "near_text/matching/longest_text.h"
#include "near_text/run/in_parallel.h"

namespace near_text {

namespace {

// The place of each is its number from 1.
EntryList listOf(std::size_t count,
                 std::function<std::u16string(std::size_t number)> const& unitsOf) {
    Preparer const asItIs{{}};
    EntryListBuilder builder(asItIs, u'\0');
    for (std::size_t i = 0; i < count; ++i)
        builder.add(i + 1, unitsOf(i), {});
    return builder.take("the list of the texts");
}

// One of the two percentages may stay as it is while the other grows. Then what is the best at the
// first step need not stay so as long as it is found.
Wanted wantedFor(Steps const& steps) {
    Percentages const first = steps.front(), last = steps.back();
    bool const isEither = (first.forShort == last.forShort) == (first.forLong == last.forLong);
    return {Wanted::kAll, isEither};
}

}  // namespace

WayBack::WayBack(Matchers const& matchers, EntryList const& entries, Indices found,
                 std::size_t count,
                 std::function<std::u16string(std::size_t number)> const& unitsOf,
                 Steps const& steps, Progress& progress, double before,
                 std::function<bool(unsigned long entry, std::size_t text)> const& isRejected)
    : found_(std::move(found)) {
    std::sort(found_.begin(), found_.end());
    found_.erase(std::unique(found_.begin(), found_.end()), found_.end());
    bestOf_.resize(found_.size());
    if (found_.empty()) return;
    EntryList const texts = listOf(count, unitsOf);
    indices_.resize(count);
    for (unsigned long index = 0; index < texts.entries.size(); ++index)
        indices_[texts.entries[index].place - 1] = index;
    Matchers back = matchers.in(texts, wantedFor(steps));
    inParallel(back.size(), found_.size(), progress, before, 1,
               [&](std::size_t worker, std::size_t number) {
                   std::u16string entry(entries.units(found_[number]));
                   if (matchers.settings().isTruncating) truncate(entry);
                   Matcher::IsRejected isRejectedHere;
                   if (isRejected) {
                       isRejectedHere = [&](unsigned long index) {
                           return isRejected(found_[number], texts.entries[index].place - 1);
                       };
                   }
                   try {
                       bestOf_[number] = bestMatches(back[worker], entry, steps, isRejectedHere);
                   } catch (Refused const&) {
                       return;
                   }
               });
}

BestMatch const* WayBack::stepsOf(unsigned long entry, std::size_t text) const {
    auto const at = std::lower_bound(found_.begin(), found_.end(), entry);
    return bestOf_[static_cast<std::size_t>(at - found_.begin())].find(indices_[text]);
}

}  // namespace near_text
