#include "near_text/shortlist.h"

namespace near_text {

bool Shortlist::Experience::isPaying(std::size_t entries) const {
    constexpr std::size_t kLearning = 16;
    return texts < kLearning || left < entries * texts / 4 * 3;
}

std::optional<Indices> Shortlist::entriesFor(std::u16string_view text, Percentages percentages) {
    // An index takes about as long as this many searches.
    constexpr std::size_t kWithout = 8;
    if (searches < kWithout && searches++ < kWithout) return std::nullopt;
    std::call_once(isIndexed, [&] { index = std::make_unique<EntryIndex>(list, excluded); });

    Experience* known = nullptr;
    {
        std::lock_guard const lock(mutex);
        auto const limits = SearchLimits(threshold, percentages.forShort, percentages.forLong);
        known = &experience.try_emplace(percentages.asPair(), Experience{limits}).first->second;
        constexpr std::size_t kRetry = 64;  // texts of another kind may follow
        if (!known->isPaying(list.entries.size()) && ++known->passed % kRetry != 0)
            return std::nullopt;
    }
    Indices entries = std::move(index->candidates({&text, 1}, known->limits)[0]);
    std::lock_guard const lock(mutex);
    ++known->texts;
    known->left += entries.size();
    return entries;
}

}  // namespace near_text
