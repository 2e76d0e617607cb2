#include "near_text/run/mutual_matches.h"

#include <algorithm>

#include "near_text/run/in_parallel.h"
#include "near_text/run/run.h"
#include "near_text/run/way_back.h"

namespace near_text {

namespace {

constexpr double kWayThere = 0.5;  // its share of the work, about

}  // namespace

MutualMatches::MutualMatches(std::function<bool(TextRow& row)> const& readRow,
                             Preparer const& preparer, Matchers& matchers, EntryList const& entries,
                             KnownPairs const& decisions) {
    for (TextRow row; readRow(row);) {
        std::size_t const line = row.number;
        texts_.push_back({std::exchange(row, {}), line, {}, {}});
    }
    Progress progress;
    findBest(matchers, preparer, decisions, progress);
    keepMutual(matchers, preparer, entries, decisions, progress);
}

bool MutualMatches::next(TextRow& row) {
    if (handedOut_ == texts_.size()) return false;
    row = std::move(texts_[handedOut_++].row);
    return true;
}

std::vector<Match> const& MutualMatches::of(TextRow const& row) const {
    Text const& text =
        *std::lower_bound(texts_.begin(), texts_.end(), row.number,
                          [](Text const& t, std::size_t line) { return t.line < line; });
    if (!text.failure.empty()) throw Refused(text.failure);
    return text.matches;
}

void MutualMatches::findBest(Matchers& matchers, Preparer const& preparer,
                             KnownPairs const& decisions, Progress& progress) {
    auto const find = [&](std::size_t worker, std::size_t number) {
        Text& text = texts_[number];
        try {
            RowUnits const prepared(text.row, preparer, matchers.settings());
            text.matches = matchers[worker].matches(prepared.units, decisions.rejectedOf(text.row));
        } catch (NotText const& error) {
            text.failure = error.what();
        } catch (Refused const& error) {
            text.failure = error.what();
        }
    };
    inParallel(matchers.size(), texts_.size(), progress, 0, kWayThere, find);
}

void MutualMatches::keepMutual(Matchers const& matchers, Preparer const& preparer,
                               EntryList const& entries, KnownPairs const& decisions,
                               Progress& progress) {
    Indices found;
    for (Text const& text : texts_) {
        for (Match const& match : text.matches)
            found.push_back(match.index);
    }
    auto const unitsOf = [&](std::size_t number) {
        Text const& text = texts_[number];
        return text.failure.empty() ? RowUnits(text.row, preparer, matchers.settings()).units : u"";
    };
    auto const isRejected = [&](unsigned long entry, std::size_t number) {
        return decisions.isRejected(decisions.nameOf(texts_[number].row), entry);
    };
    WayBack const back(matchers, entries, found, texts_.size(), unitsOf,
                       {matchers.terms().percentages}, progress, kWayThere, isRejected);
    for (std::size_t i = 0; i < texts_.size(); ++i) {
        std::erase_if(texts_[i].matches,
                      [&](Match const& match) { return back.stepsOf(match.index, i) == nullptr; });
    }
}

}  // namespace near_text
