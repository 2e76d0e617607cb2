#include "near_text/run/matchers.h"

namespace near_text {

Matchers::Matchers(AddInSettings const& addIn, RunSettings const& settings, EntryList const& list,
                   SearchTerms const& terms, Wanted wanted)
    : addIn_(addIn),
      settings_(settings),
      terms_(terms),
      excluded_(reference::readExclusions(terms.exclusions, list.separator)),
      shortlist_(list, excluded_, terms.threshold) {
    Shortlist* const used = settings.isIndexed ? &shortlist_ : nullptr;
    for (unsigned i = 0; i < settings.jobs; ++i) {
        components_.push_back(makeComponent(addIn));
        matchers_.push_back(
            std::make_unique<Matcher>(*components_.back(), list, terms, excluded_, wanted, used));
    }
    // Bad terms are bad for every text, so they are reported before the first.
    matchers_[0]->search.findAmong(u"-", terms.percentages, {});
}

std::size_t Matchers::leftOut() const {
    std::size_t count = 0;
    for (auto const& matcher : matchers_)
        count += matcher->leftOut();
    return count;
}

}  // namespace near_text
