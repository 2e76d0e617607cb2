#include "near_text/matching/index/shortlist.h"

namespace near_text {

bool Shortlist::Experience::isPaying(std::size_t entries) const {
    constexpr std::size_t kLearning = 16;
    constexpr double kMostLeft = 0.75;
    return texts < kLearning ||
           static_cast<double>(left) < kMostLeft * static_cast<double>(entries * texts);
}

Shortlist::Experience* Shortlist::experienceOf(Percentages percentages) {
    constexpr std::size_t kRetry = 64;  // texts of another kind may have come
    std::lock_guard const lock(mutex_);
    std::pair const key(percentages.forShort, percentages.forLong);
    auto place = experience_.find(key);
    if (place == experience_.end()) {
        SearchLimits const limits(threshold_, percentages.forShort, percentages.forLong);
        place = experience_.emplace(key, Experience{limits}).first;
    }
    Experience& known = place->second;
    if (known.isPaying(list_.entries.size()) || ++known.passed % kRetry == 0) return &known;
    return nullptr;
}

EntryIndex const* Shortlist::readyIndex() {
    if (!isBegun_.test_and_set()) {
        index_ = std::make_unique<EntryIndex>(list_, excluded_);
        ready_ = index_.get();
    }
    return ready_;
}

std::optional<Indices> Shortlist::entriesFor(std::u16string_view text, Percentages percentages) {
    if (searches_ < kSearchesWithout && searches_++ < kSearchesWithout) return std::nullopt;
    Experience* const known = experienceOf(percentages);
    EntryIndex const* const asked = known == nullptr ? nullptr : readyIndex();
    if (asked == nullptr) return std::nullopt;
    Indices entries = asked->candidates(text, known->limits);
    std::lock_guard const lock(mutex_);
    ++known->texts;
    known->left += entries.size();
    return entries;
}

}  // namespace near_text
