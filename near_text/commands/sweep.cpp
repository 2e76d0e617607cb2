#include "near_text/run/sweep.h"

#include <optional>

#include "near_text/commands/commands.h"
#include "near_text/matching/read_entries.h"
#include "near_text/messages/interrupt.h"
#include "near_text/messages/messages.h"
#include "near_text/output/output.h"
#include "near_text/run/list_rows.h"
#include "near_text/run/run.h"
#include "near_text/run/sweep_table.h"

namespace near_text {

Status execute(SweepSettings const& settings) {
    bool const isWithin = !settings.entries;
    Preparer const preparer = readPreparer(settings.search);
    SearchTerms const terms = readTerms(settings.search);
    EntryList const list =
        isWithin ? readOneList(settings.texts, preparer, settings.run.isTruncating).list
                 : readEntries(*settings.entries, preparer).list;
    KnownPairs pairs;
    if (settings.pairs) {
        pairs = KnownPairs({*settings.pairs}, settings.pairNaming, list);
        if (pairs.size() == 0) {
            throw std::runtime_error(shownName(settings.pairs->name) +
                                     " contains no pair that is accepted");
        }
    }
    Sweep sweep(settings.steps, pairs);
    Matchers matchers(settings.addIn, settings.run, list, terms, {});
    std::optional<RowReader> reader;
    if (!isWithin) reader.emplace(settings.texts, kLongestText);
    ListRows rows(list);
    Output output(settings.output.encoding);
    MatchWriter writer(output, settings.texts.file, settings.run.isStrict);
    bool isWhole = false, isEmpty = true;
    auto const next = [&](TextRow& row) {
        if (isWithin) return rows.next(row);
        isWhole = !reader->next(row);
        isEmpty &= isWhole;
        if (!isWhole) pairs.see(row);
        return !isWhole;
    };
    auto const work = [&](Matcher& matcher, TextRow const& row,
                          std::u16string const& units) -> LineResult {
        return {{},
                {},
                isWithin ? sweep.addWithin(matcher, list, rows.indexOf(row))
                         : sweep.add(matcher, row, units)};
    };
    Status const status = run(
        matchers, preparer, next, work,
        [](TextRow const&, std::string const&) { return std::string(); }, writer);
    if (isWhole && isEmpty)
        complain("note: " + shownName(settings.texts.file.name) + " contains no text");
    if (isWhole) pairs.requireAllSeen();
    if (signalCaught() == 0) {
        if (!isWithin && settings.pairs) sweep.countMutual(matchers, list);
        Table const table =
            sweepTable(settings.percents, sweep.counts(), pairs, isWithin, settings.hasAllColumns);
        output.write(settings.output.format->table(settings.output.delimiter, table));
    }
    output.flush();
    return status;
}

}  // namespace near_text
