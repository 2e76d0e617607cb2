// A higher percentage finds nothing that a lower one does not find, so each text is searched for in
// the whole list at the lowest percentage, and then, from one to the next, among what is left.
#include <algorithm>
#include <mutex>

#include "near_text/commands/commands.h"
#include "near_text/commands/table_note.h"
#include "near_text/matching/known_pairs.h"
#include "near_text/matching/read_entries.h"
#include "near_text/messages/interrupt.h"
#include "near_text/output/output.h"

namespace near_text {

namespace {

// Of the matches of some texts.
struct Count {
    std::size_t matches = 0;
    std::size_t known = 0;       // among the pairs
    std::size_t textsRight = 0;  // that have a match among the pairs

    void add(std::vector<Match> const& found, std::string const& text, KnownPairs const& pairs) {
        auto const isKnown = [&](Match const& match) {
            return pairs.isAccepted(text, match.index);
        };
        auto const count =
            static_cast<std::size_t>(std::count_if(found.begin(), found.end(), isKnown));
        matches += found.size();
        known += count;
        if (count > 0) ++textsRight;
    }
};

struct PercentCount {
    std::size_t none = 0, one = 0, several = 0;  // texts that find so many entries
    Count all, best;
};

class Sweep {
public:
    Sweep(std::vector<int> const& percents, KnownPairs const& pairs)
        : pairs_(pairs), percents_(percents), counts_(percents.size()) {}

    // Whether it finds anything at the lowest percentage. From any number of threads.
    bool add(Matcher& matcher, std::string const& name, std::u16string_view text) {
        std::vector<Match> matches = matcher.matches(text);
        bool const isFound = !matches.empty();
        for (std::size_t i = 0; i < percents_.size(); ++i) {
            if (i > 0) narrow(matcher, text, percents_[i], matches);
            std::lock_guard const lock(mutex_);
            tell(counts_[i], name, matches);
        }
        return isFound;
    }

    Table table() const {
        Table table;
        for (std::size_t i = percents_.size(); i-- > 0;) {
            table.columns.clear();
            Cells& row = table.rows.emplace_back();
            for (auto const& [name, value] : figures(percents_[i], counts_[i])) {
                table.columns.push_back({name, /*isNumber=*/true});
                row.push_back(std::to_string(value));
            }
        }
        return table;
    }

private:
    static void narrow(Matcher& matcher, std::u16string_view text, int percent,
                       std::vector<Match>& matches) {
        if (matches.empty()) return;
        Indices indices;
        for (Match const& match : matches)
            indices.push_back(match.index);
        indices = matcher.search.findAmong(text, {percent, percent}, indices);
        std::erase_if(matches, [&](Match const& match) {
            return !std::binary_search(indices.begin(), indices.end(), match.index);
        });
    }

    void tell(PercentCount& count, std::string const& name, std::vector<Match> const& matches) {
        ++(matches.empty() ? count.none : matches.size() == 1 ? count.one : count.several);
        count.all.add(matches, name, pairs_);
        std::vector<Match> best = matches;
        keepWanted(best, {Wanted::kAll, true});
        count.best.add(best, name, pairs_);
    }

    using Figures = std::vector<std::pair<char const*, std::size_t>>;  // with their names

    Figures figures(int percent, PercentCount const& count) const {
        Figures figures = {{"percent", static_cast<std::size_t>(percent)},
                           {"none", count.none},
                           {"one", count.one},
                           {"several", count.several},
                           {"matches", count.all.matches},
                           {"best_matches", count.best.matches}};
        if (pairs_.size() == 0) return figures;
        figures.insert(figures.end(), {{"pairs", pairs_.size()},
                                       {"found", count.all.known},
                                       {"others", count.all.matches - count.all.known},
                                       {"best_found", count.best.known},
                                       {"best_others", count.best.matches - count.best.known},
                                       {"texts", pairs_.texts()},
                                       {"best_texts", count.best.textsRight}});
        return figures;
    }

    KnownPairs const& pairs_;
    std::vector<int> const percents_;  // ascending
    std::mutex mutex_;
    std::vector<PercentCount> counts_;
};

}  // namespace

Status execute(SweepSettings const& settings) {
    noteTables(settings.texts, settings.entries);
    Preparer const preparer = readPreparer(settings.search);
    SearchTerms const terms = readTerms(settings.search);
    auto const file = readEntries(settings.entries, preparer);
    KnownPairs pairs;
    if (settings.pairs) {
        pairs = KnownPairs({*settings.pairs}, settings.pairNaming, file.list);
        if (pairs.size() == 0) {
            throw std::runtime_error(shownName(settings.pairs->name) +
                                     " contains no pair that is accepted");
        }
    }
    Sweep counts(settings.percents, pairs);
    Matchers matchers(settings.addIn, settings.run, file.list, terms, {});
    RowReader reader(settings.texts, kLongestText);
    Output output(settings.output.encoding);
    MatchWriter writer(output, settings.texts.file, settings.run.isStrict);
    bool isWhole = false;
    auto const next = [&](TextRow& row) {
        isWhole = !reader.next(row);
        if (!isWhole) pairs.see(row);
        return !isWhole;
    };
    Status const status = run(
        matchers, preparer, next,
        [&](Matcher& matcher, TextRow const& row, std::u16string const& units) -> LineResult {
            return {{}, {}, counts.add(matcher, pairs.nameOf(row), units)};
        },
        [](TextRow const&, std::string const&) { return std::string(); }, writer);
    if (isWhole) pairs.requireAllSeen();
    if (signalCaught() == 0)
        output.write(settings.output.format->table(settings.output.delimiter, counts.table()));
    output.flush();
    return status;
}

}  // namespace near_text
