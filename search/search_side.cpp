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

void SearchSide::restore() {
    ++entry_;
    cancelledCount_ = 0;
    cancelledUnits_ = 0;
}

bool SearchSide::isLeftWithin(unsigned long limit, Pieces const& entryLeft) {
    unsigned long const rows = units() - cancelledUnits_;
    if (auto const answer = isWithinByLengths(limit, rows, entryLeft.units)) return *answer;
    if (units() <= MatchVector<Rows64>::kRows) return isWithinRows(fewRows_, limit, entryLeft);
    if (units() <= MatchVector<Rows128>::kRows) return isWithinRows(moreRows_, limit, entryLeft);
    // Several edits to spare take as long as all blocks of rows; more of them, as making them anew.
    unsigned long const mostSpare = cancelledUnits_ == 0 ? 5 : SparseAlignment::kMostSpare;
    unsigned long const spare = limit + entryLeft.units - rows;
    if (spare <= mostSpare) return isSparselyWithin(spare, entryLeft);
    if (!banded_) banded_.emplace();
    if (cancelledUnits_ == 0) return banded_->isWithinOfSame(limit, {words(), rows}, entryLeft);
    left_.clear();
    left_.reserve(words().size());
    for (unsigned long i = 0; i < words().size(); ++i) {
        if (cancelledBy_[i] != entry_) left_.push_back(words()[i]);
    }
    Pieces const left(left_, rows);
    auto const& [pattern, text] = std::minmax(
        left, entryLeft, [](auto const& a, auto const& b) { return a.units < b.units; });
    // The first leaves the rows of all words in place.
    if (pattern.units <= MatchVector<Rows128>::kRows) return isWithin(limit, pattern, text);
    return banded_->isWithin(limit, pattern, text);
}

bool SearchSide::isSparselyWithin(unsigned long spare, Pieces const& entryLeft) {
    if (!sparse_) sparse_.emplace(words());
    auto const cancelled = std::span(cancelled_).first(cancelledCount_);
    for (unsigned long const word : cancelled)
        sparse_->leaveOut(word);
    bool const isWithin = sparse_->isWithin(spare, entryLeft);
    for (unsigned long const word : cancelled)
        sparse_->takeBack(word);
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
