#include "near_text/run/mutual_matches.h"

#include <algorithm>

#include "near_text/matching/longest_text.h"
#include "near_text/run/in_parallel.h"
#include "near_text/run/run.h"

namespace near_text {

MutualMatches::MutualMatches(std::function<bool(TextRow& row)> const& readRow,
                             Preparer const& preparer, Matchers& matchers, EntryList const& entries,
                             KnownPairs const& decisions) {
    for (TextRow row; readRow(row);) {
        std::size_t const line = row.number;
        texts_.push_back({std::exchange(row, {}), line, {}, {}});
    }
    findBest(matchers, preparer, decisions);
    Indices const found = foundEntries();
    if (!found.empty()) keepMutual(matchers, preparer, entries, decisions, found);
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
                             KnownPairs const& decisions) {
    inParallel(matchers.size(), texts_.size(), [&](std::size_t worker, std::size_t number) {
        Text& text = texts_[number];
        try {
            RowUnits const prepared(text.row, preparer, matchers.settings());
            text.matches = matchers[worker].matches(prepared.units, decisions.rejectedOf(text.row));
        } catch (NotText const& error) {
            text.failure = error.what();
        } catch (Refused const& error) {
            text.failure = error.what();
        }
    });
}

// Ascending, each once.
Indices MutualMatches::foundEntries() const {
    Indices found;
    for (Text const& text : texts_) {
        for (Match const& match : text.matches)
            found.push_back(match.index);
    }
    std::sort(found.begin(), found.end());
    found.erase(std::unique(found.begin(), found.end()), found.end());
    return found;
}

// The place of each is its number in `texts_`, from 1.
EntryList MutualMatches::list(Preparer const& preparer, RunSettings const& settings) const {
    Preparer const asItIs{{}};
    EntryListBuilder builder(asItIs, u'\0');
    for (std::size_t i = 0; i < texts_.size(); ++i) {
        bool const isIn = texts_[i].failure.empty();
        builder.add(i + 1, isIn ? RowUnits(texts_[i].row, preparer, settings).units : u"", {});
    }
    return builder.take("the list of the texts");
}

void MutualMatches::keepMutual(Matchers const& matchers, Preparer const& preparer,
                               EntryList const& entries, KnownPairs const& decisions,
                               Indices const& found) {
    EntryList const texts = list(preparer, matchers.settings());
    Matchers back = matchers.in(texts);
    std::vector<Indices> bestOf(found.size());  // numbers of texts, ascending
    inParallel(back.size(), found.size(), [&](std::size_t worker, std::size_t number) {
        try {
            std::u16string entry(entries.units(found[number]));
            if (matchers.settings().isTruncating) truncate(entry);
            auto const isRejected = [&](unsigned long index) {
                TextRow const& row = texts_[texts.entries[index].place - 1].row;
                return decisions.isRejected(decisions.nameOf(row), found[number]);
            };
            for (Match const& match : back[worker].matches(entry, isRejected))
                bestOf[number].push_back(texts.entries[match.index].place - 1);
        } catch (Refused const&) {
            return;
        }
        std::sort(bestOf[number].begin(), bestOf[number].end());
    });
    for (std::size_t i = 0; i < texts_.size(); ++i) {
        std::erase_if(texts_[i].matches, [&](Match const& match) {
            auto const entry = std::lower_bound(found.begin(), found.end(), match.index);
            Indices const& best = bestOf[static_cast<std::size_t>(entry - found.begin())];
            return !std::binary_search(best.begin(), best.end(), i);
        });
    }
}

}  // namespace near_text
