#include <algorithm>
#include <atomic>
#include <optional>

#include "near_text/commands/commands.h"
#include "near_text/matching/entry_groups.h"
#include "near_text/matching/pairs_within.h"
#include "near_text/matching/read_entries.h"
#include "near_text/messages/interrupt.h"
#include "near_text/messages/messages.h"
#include "near_text/output/output.h"
#include "near_text/run/list_rows.h"

namespace near_text {

namespace {

// Of equal lines each has a pair with all that follow.
constexpr std::size_t kManyPairs = 100;

// The pairs to print under the entry at `index`, as its matches.
std::vector<Match> pairs(Matcher& matcher, EntryList const& list, Percentages percentages,
                         unsigned long index) {
    Indices others = pairsUnder(matcher, percentages, index,
                                matcher.search.find(list.units(index), percentages));
    matcher.leaveOut(list.units(index), others);
    std::vector<Match> matches = matcher.measured(list.units(index), others);
    for (Match& match : matches) {
        match.percent = std::max(match.percent, matcher.nearnessOf(list.units(match.index), index));
    }
    return matches;
}

// What cannot be encoded is left empty, and `complainOf` is told.
Table groupTable(
    EntryGroups& groups, EntryList const& list, Cells const& keptColumns, Output const& output,
    std::function<void(Entry const& entry, std::string const& error)> const& complainOf) {
    Table table = {{{"group", true}, {"line", true}, {"text", false}}, {}};
    for (std::string const& name : keptColumns)
        table.columns.push_back({name, false});
    std::size_t number = 0;
    for (auto const& group : groups.joined()) {
        ++number;
        for (std::size_t const index : group) {
            Entry const entry = list.entry(index);
            Cells texts = entry.kept;
            texts.insert(texts.begin(), entry.text);
            std::string const error = output.dropUnencodable(texts);
            if (!error.empty()) complainOf(entry, error);
            Cells& row =
                table.rows.emplace_back(Cells{std::to_string(number), std::to_string(entry.place)});
            row.insert(row.end(), texts.begin(), texts.end());
        }
    }
    return table;
}

}  // namespace

Status execute(DuplicatesSettings const& settings) {
    Preparer const preparer = readPreparer(settings.search);
    SearchTerms const terms = readTerms(settings.search);
    auto const file = readOneList(settings.texts, preparer, settings.run.isTruncating);
    EntryList const& list = file.list;
    std::optional<EntryGroups> groups;
    if (settings.isGrouped) groups.emplace(list);
    Matchers matchers(settings.addIn, settings.run, groups ? groups->distinct() : list, terms, {});
    Output output(settings.output.encoding);
    Format const& format = *settings.output.format;
    char const delimiter = settings.output.delimiter;
    RowLayout layout =
        settings.isGrouped
            ? RowLayout(true, delimiter, file.keptNames, {}, {"group", "line", "text"})
            : RowLayout(true, delimiter, file.keptNames, file.keptNames);
    layout.about = {
        "duplicates", settings.output.commandLine, shownName(settings.texts.file.name), {}};
    if (!settings.isGrouped) output.write(format.heading(layout));
    MatchWriter writer(output, settings.texts.file, settings.run.isStrict);
    ListRows rows(list);
    std::atomic<std::size_t> crowded = 0;  // lines with so many pairs

    auto const work = [&](Matcher& matcher, TextRow const& row,
                          std::u16string const&) -> LineResult {
        unsigned long const index = rows.indexOf(row);
        if (groups) return {{}, {}, groups->join(matcher, terms.percentages, index)};
        std::vector<Match> matches = pairs(matcher, list, terms.percentages, index);
        if (matches.empty()) return {};
        if (matches.size() >= kManyPairs) ++crowded;
        if (settings.output.showsDifferences) {
            matcher.markDifferences(matches, row.text, list.units(index), preparer);
        }
        return {format.matches(layout, row, list, matches), {}, true};
    };
    auto const failureText = [&](TextRow const& row, std::string const& error) {
        return settings.isGrouped ? std::string() : format.failure(layout, row, error);
    };
    auto const next = [&](TextRow& row) { return rows.next(row); };
    Status status = run(matchers, preparer, next, work, failureText, writer);
    if (groups && signalCaught() == 0) {
        auto const complainOf = [&](Entry const& entry, std::string const& error) {
            complain(placeOf(shownName(settings.texts.file.name), entry.place) + error);
            status = Status::Error;
        };
        output.write(format.table(
            delimiter, groupTable(*groups, list, layout.textColumns, output, complainOf)));
    }
    if (!groups && !format.isPage && crowded > 0) {
        complain("note: " + shownLines(crowded) + " with " + std::to_string(kManyPairs) +
                 " pairs or more; --groups prints every line once");
    }
    if (!groups && writer.isWhole()) output.write(format.ending());
    output.flush();
    return status;
}

}  // namespace near_text
