#include "near_text/run/matchers.h"

namespace near_text {

Matchers::Matchers(AddInSettings const& addIn, RunSettings const& settings, EntryList const& list,
                   SearchTerms const& terms, Wanted wanted)
    : addIn_(addIn),
      settings_(settings),
      list_(list),
      terms_(terms),
      wanted_(wanted),
      excluded_(reference::readExclusions(terms.exclusions, list.separator)),
      shortlist_(list, excluded_, terms.threshold),
      components_(settings.jobs),
      matchers_(settings.jobs) {
    // Bad terms are bad for every text, so they are reported before the first.
    (*this)[0].search.findAmong(u"-", terms.percentages, {});
}

Matcher& Matchers::operator[](std::size_t worker) {
    if (!matchers_[worker]) {
        components_[worker] = makeComponent(addIn_);
        Shortlist* const used = settings_.isIndexed ? &shortlist_ : nullptr;
        matchers_[worker] = std::make_unique<Matcher>(*components_[worker], list_, terms_,
                                                      excluded_, wanted_, used);
    }
    return *matchers_[worker];
}

std::size_t Matchers::leftOut() const {
    std::size_t count = 0;
    for (auto const& matcher : matchers_)
        count += matcher ? matcher->leftOut() : 0;
    return count;
}

}  // namespace near_text
