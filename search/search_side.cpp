#include "search/search_side.h"

#include <algorithm>

namespace comparer {

SearchSide::SearchSide(WordList const& list, std::uint32_t begin,
                       std::span<Utf16View const> samples)
    : list_(list),
      begin_(begin),
      samples_(samples),
      cancelledBy_(list.size() - begin),
      cancelled_(cancelledBy_.size()) {
    for (Utf16View const word : words())
        histogram_.add(word);
}

std::optional<unsigned short> SearchSide::rarestUnit() {
    if (samples_.empty()) return {};
    return orderedHistogram().rarest();
}

bool SearchSide::isLeftWithin(unsigned long limit, Pieces const& entryLeft) {
    unsigned long const rows = units() - cancelledUnits_;
    if (auto const answer = isWithinByLengths(limit, rows, entryLeft.units)) return *answer;
    if (units() <= MatchVector<Rows64>::kRows) return isWithinRows(fewRows_, limit, entryLeft);
    if (units() <= MatchVector<Rows128>::kRows) return isWithinRows(moreRows_, limit, entryLeft);
    unsigned long const spare = limit + entryLeft.units - rows;
    if (spare <= SparseAlignment::kMostSpare) {
        return isWithinLeft(sparse_, [&](auto& all) { return all.isWithin(spare, entryLeft); });
    }
    // Each word that is left out costs in each column; a pattern without them costs once.
    constexpr unsigned long kMostCost = 2000;
    if (cancelledCount_ * entryLeft.units > kMostCost)
        return LongPattern(wordsLeft()).isWithin(limit, entryLeft);
    return isWithinLeft(long_, [&](auto& all) { return all.isWithin(limit, entryLeft); });
}

std::vector<Utf16View> SearchSide::wordsLeft() const {
    std::vector<Utf16View> left;
    left.reserve(words().size());
    for (unsigned long i = 0; i < words().size(); ++i) {
        if (cancelledBy_[i] != entry_) left.push_back(words()[i]);
    }
    return left;
}

template <class All, class Test>
bool SearchSide::isWithinLeft(std::optional<All>& all, Test const& test) {
    if (!all) all.emplace(words());
    auto const cancelled = std::span(cancelled_).first(cancelledCount_);
    for (unsigned long const word : cancelled)
        all->leaveOut(word);
    bool const isWithin = test(*all);
    for (unsigned long const word : cancelled)
        all->takeBack(word);
    return isWithin;
}

template <class Rows>
bool SearchSide::isWithinRows(std::optional<MatchVector<Rows>>& match, unsigned long limit,
                              Pieces const& entryLeft) {
    if (!match) {
        match.emplace();
        unsigned long row = 0;
        for (Utf16View const word : words()) {
            for (unsigned short const unit : word)
                match->add(unit, row++);
        }
        match->keepRows();
    }
    match->takeRowsBack();
    if (cancelledUnits_ != 0) takeOutCancelled(*match);
    return isWithin(limit, *match, units() - cancelledUnits_, entryLeft);
}

template <class Rows>
void SearchSide::takeOutCancelled(MatchVector<Rows>& match) const {
    // From the last word on, since the rows above move down.
    auto const all = words();
    unsigned long row = units();
    for (unsigned long i = all.size(); i-- > 0;) {
        row -= all[i].size();
        if (cancelledBy_[i] == entry_) match.removeRows(row, all[i].size());
    }
}

}  // namespace comparer
