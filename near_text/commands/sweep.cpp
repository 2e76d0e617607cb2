// A higher percentage finds nothing that a lower one does not find, so each text is searched for in
// the whole list at the lowest percentage, and then, from one to the next, among what is left.
#include <algorithm>
#include <cctype>
#include <map>
#include <mutex>
#include <set>

#include "near_text/commands/commands.h"
#include "near_text/commands/table_note.h"
#include "near_text/input/number.h"
#include "near_text/matching/read_entries.h"
#include "near_text/messages/interrupt.h"
#include "near_text/output/output.h"

namespace near_text {

namespace {

using Pair = std::pair<std::size_t, std::size_t>;  // lines of the text and of the entry

// With the line in which the file has each.
using Pairs = std::map<Pair, std::size_t>;

bool hasEntryAt(EntryList const& list, std::size_t place) {
    return std::binary_search(list.entries.begin(), list.entries.end(), Entry{place, {}, {}, 0, 0},
                              [](Entry const& a, Entry const& b) { return a.place < b.place; });
}

// "id", or a name with that word in it: text_id, ID 2.
bool namesIds(std::string const& name) {
    std::string words = " ";
    for (char const c : name)
        words += std::isalnum(static_cast<unsigned char>(c)) != 0
                     ? static_cast<char>(std::tolower(static_cast<unsigned char>(c)))
                     : ' ';
    words += ' ';
    return words.find(" id ") != std::string::npos || words.find(" ids ") != std::string::npos;
}

// The first row may be a heading, but not of ids of records, which may be numbers too.
Pairs readPairs(TextFile const& file, EntryList const& list) {
    Pairs pairs;
    TableReader table(file, {.delimiter = TableLayout::kGuessed});
    table.column("2");
    bool isFirst = true;
    for (Row row; table.next(row); isFirst = false) {
        auto const refusal = [&](std::string const& reason) {
            return std::runtime_error(table.place(row) + reason);
        };
        if (!row.fault.empty()) throw refusal(row.fault);
        auto const text = parseNumber<std::size_t>(row.fields[0], 1);
        auto const entry = parseNumber<std::size_t>(row.fields[1], 1);
        if (isFirst && !text && !entry) {
            for (std::string const& name : {row.fields[0], row.fields[1]}) {
                if (!namesIds(name)) continue;
                throw refusal('\'' + name + "' names ids, but line numbers are read");
            }
            continue;
        }
        if (!text || !entry) {
            throw refusal('\'' + row.fields[text ? 1 : 0] + "' is not a line number");
        }
        if (!hasEntryAt(list, *entry)) {
            throw refusal("there is no entry in line " + std::to_string(*entry));
        }
        pairs.emplace(Pair(*text, *entry), row.line);
    }
    if (pairs.empty()) throw std::runtime_error(shownName(file.name) + " contains no pairs");
    return pairs;
}

// Of the matches of some texts.
struct Count {
    std::size_t matches = 0;
    std::size_t known = 0;       // among the pairs
    std::size_t textsRight = 0;  // that have a match among the pairs

    void add(std::vector<Match> const& found, EntryList const& list, std::size_t line,
             Pairs const& pairs) {
        auto const isKnown = [&](Match const& match) {
            return pairs.count({line, list.entries[match.index].place}) > 0;
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
    Sweep(SweepSettings const& settings, EntryList const& entryList)
        : list_(entryList), percents_(settings.percents), counts_(percents_.size()) {
        if (settings.pairs) pairs_ = readPairs(*settings.pairs, list_);
    }

    // Whether it finds anything at the lowest percentage. From any number of threads.
    bool add(Matcher& matcher, std::size_t line, std::u16string_view text) {
        std::vector<Match> matches = matcher.matches(text);
        bool const isFound = !matches.empty();
        for (std::size_t i = 0; i < percents_.size(); ++i) {
            if (i > 0) narrow(matcher, text, percents_[i], matches);
            std::lock_guard const lock(mutex_);
            tell(counts_[i], line, matches);
        }
        return isFound;
    }

    std::set<std::size_t> textsOfPairs() const {
        std::set<std::size_t> texts;
        for (auto const& [pair, line] : pairs_)
            texts.insert(pair.first);
        return texts;
    }
    // Where the file of the pairs has the text in this line.
    std::size_t lineOfText(std::size_t text) const { return pairs_.lower_bound({text, 0})->second; }

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

    void tell(PercentCount& count, std::size_t line, std::vector<Match> const& matches) {
        ++(matches.empty() ? count.none : matches.size() == 1 ? count.one : count.several);
        count.all.add(matches, list_, line, pairs_);
        std::vector<Match> best = matches;
        keepWanted(best, {Wanted::kAll, true});
        count.best.add(best, list_, line, pairs_);
    }

    using Figures = std::vector<std::pair<char const*, std::size_t>>;  // with their names

    Figures figures(int percent, PercentCount const& count) const {
        Figures figures = {{"percent", static_cast<std::size_t>(percent)},
                           {"none", count.none},
                           {"one", count.one},
                           {"several", count.several},
                           {"matches", count.all.matches},
                           {"best_matches", count.best.matches}};
        if (pairs_.empty()) return figures;
        figures.insert(figures.end(), {{"pairs", pairs_.size()},
                                       {"found", count.all.known},
                                       {"others", count.all.matches - count.all.known},
                                       {"best_found", count.best.known},
                                       {"best_others", count.best.matches - count.best.known},
                                       {"texts", textsOfPairs().size()},
                                       {"best_texts", count.best.textsRight}});
        return figures;
    }

    EntryList const& list_;
    Pairs pairs_;
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
    Sweep counts(settings, file.list);
    Matchers matchers(settings.addIn, settings.run, file.list, terms, {});
    RowReader reader(settings.texts, kLongestText);
    Output output(settings.output.encoding);
    MatchWriter writer(output, settings.texts.file, settings.run.isStrict);
    std::set<std::size_t> missing = counts.textsOfPairs();
    bool isWhole = false;
    auto const next = [&](TextRow& row) {
        isWhole = !reader.next(row);
        if (!isWhole) missing.erase(row.number);
        return !isWhole;
    };
    Status const status = run(
        matchers, preparer, next,
        [&](Matcher& matcher, TextRow const& row, std::u16string const& units) -> LineResult {
            return {{}, {}, counts.add(matcher, row.number, units)};
        },
        [](TextRow const&, std::string const&) { return std::string(); }, writer);
    if (isWhole && !missing.empty()) {
        std::size_t const text = *missing.begin();
        throw std::runtime_error(placeOf(shownName(settings.pairs->name), counts.lineOfText(text)) +
                                 "there is no text in line " + std::to_string(text));
    }
    if (signalCaught() == 0)
        output.write(settings.output.format->table(settings.output.delimiter, counts.table()));
    output.flush();
    return status;
}

}  // namespace near_text
