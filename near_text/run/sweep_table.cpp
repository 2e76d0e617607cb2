#include "near_text/run/sweep_table.h"

#include <algorithm>
#include <cstdio>

namespace near_text {

namespace {

// A row: some matches at one percentage.
struct Place {
    char const* kept;
    int percent;
    MatchCount const& count;
    KnownPairs const& pairs;
    double highest;  // F1 of these at any percentage
};

double share(std::size_t part, std::size_t whole) {
    return static_cast<double>(part) / static_cast<double>(whole);
}

// Nothing of nothing is no share.
std::string shown(std::size_t part, std::size_t whole) {
    if (whole == 0) return {};
    char text[16];
    std::snprintf(text, sizeof text, "%.3f", share(part, whole));
    return text;
}

// 2 / (1 / precision + 1 / recall), and equal where it is equal.
double f1(MatchCount const& count, KnownPairs const& pairs) {
    return share(2 * count.known, count.matches + pairs.size());
}

enum class When { Always, OnRequest, OnRequestOfTwoLists };

struct Column {
    char const* name;
    When when;
    std::string (*cell)(Place const& place);
};

using Number = std::size_t MatchCount::*;

template <Number number>
std::string counted(Place const& place) {
    return std::to_string(place.count.*number);
}

using enum When;

constexpr Column kColumns[] = {
    {"percent", Always, [](Place const& p) { return std::to_string(p.percent); }},
    {"none", OnRequestOfTwoLists, counted<&MatchCount::none>},
    {"one", OnRequestOfTwoLists, counted<&MatchCount::one>},
    {"several", OnRequestOfTwoLists, counted<&MatchCount::several>},
    {"matches", Always, counted<&MatchCount::matches>},
    {"found", Always, counted<&MatchCount::known>},
    {"others", OnRequest,
     [](Place const& p) { return std::to_string(p.count.matches - p.count.known); }},
    {"pairs", OnRequest, [](Place const& p) { return std::to_string(p.pairs.size()); }},
    {"texts_found", OnRequestOfTwoLists, counted<&MatchCount::textsRight>},
    {"texts", OnRequestOfTwoLists, [](Place const& p) { return std::to_string(p.pairs.texts()); }},
    {"precision", Always, [](Place const& p) { return shown(p.count.known, p.count.matches); }},
    {"recall", Always, [](Place const& p) { return shown(p.count.known, p.pairs.size()); }},
    {"f1", Always,
     [](Place const& p) { return shown(2 * p.count.known, p.count.matches + p.pairs.size()); }},
};

class QualityTable {
public:
    QualityTable(std::vector<int> const& percents, KnownPairs const& pairs, bool isWithin,
                 bool hasAllColumns)
        : percents_(percents), pairs_(pairs) {
        table_.columns = {{"kept", false}};
        for (Column const& column : kColumns) {
            bool const isWanted =
                column.when == Always || (hasAllColumns && (column.when == OnRequest || !isWithin));
            if (!isWanted) continue;
            columns_.push_back(&column);
            table_.columns.push_back({column.name, true});
        }
        table_.columns.push_back({"highest", false});
    }

    void add(char const* kept, StepCounts const& counts) {
        double highest = 0;
        for (MatchCount const& count : counts)
            highest = std::max(highest, f1(count, pairs_));
        for (std::size_t step = counts.size(); step-- > 0;) {
            Place const place = {kept, percents_[step], counts[step], pairs_, highest};
            Cells& row = table_.rows.emplace_back(Cells{kept});
            for (Column const* const column : columns_)
                row.push_back(column->cell(place));
            bool const isHighest = highest > 0 && f1(counts[step], pairs_) == highest;
            row.emplace_back(isHighest ? "yes" : "");
        }
    }

    Table take() { return std::move(table_); }

private:
    std::vector<int> const& percents_;
    KnownPairs const& pairs_;
    std::vector<Column const*> columns_;
    Table table_;
};

Table countTable(std::vector<int> const& percents, SweepCounts const& counts, bool isWithin) {
    Table table;
    std::vector<char const*> names = {"percent", "none",    "one",
                                      "several", "matches", "best_matches"};
    if (isWithin) names = {"percent", "matches"};
    for (char const* const name : names)
        table.columns.push_back({name, true});
    for (std::size_t step = percents.size(); step-- > 0;) {
        MatchCount const& all = counts.all[step];
        std::vector<std::size_t> figures = {all.none, all.one, all.several, all.matches,
                                            counts.best[step].matches};
        if (isWithin) figures = {all.matches};
        Cells& row = table.rows.emplace_back(Cells{std::to_string(percents[step])});
        for (std::size_t const figure : figures)
            row.push_back(std::to_string(figure));
    }
    return table;
}

}  // namespace

Table sweepTable(std::vector<int> const& percents, SweepCounts const& counts,
                 KnownPairs const& pairs, bool isWithin, bool hasAllColumns) {
    if (pairs.size() == 0) return countTable(percents, counts, isWithin);
    QualityTable table(percents, pairs, isWithin, hasAllColumns);
    table.add("all", counts.all);
    if (!isWithin) {
        table.add("best", counts.best);
        table.add("mutual", counts.mutual);
    }
    return table.take();
}

}  // namespace near_text
