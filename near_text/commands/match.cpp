#include <optional>

#include "near_text/commands/commands.h"
#include "near_text/matching/read_entries.h"
#include "near_text/output/output.h"
#include "near_text/run/mutual_matches.h"

namespace near_text {

Status execute(MatchSettings const& settings) {
    Preparer const preparer = readPreparer(settings.search);
    SearchTerms const terms = readTerms(settings.search);
    auto const [list, entryColumns] = readEntries(settings.entries, preparer);
    KnownPairs decisions;
    if (!settings.decisions.empty())
        decisions = KnownPairs(settings.decisions, settings.pairNaming, list);
    Matchers matchers(settings.addIn, settings.run, list, terms, settings.wanted);
    RowReader reader(settings.texts, kLongestText);
    Output output(settings.output.encoding);
    Format const& format = *settings.output.format;
    RowLayout layout(!settings.isPart, settings.output.delimiter, reader.keptNames(), entryColumns,
                     RowLayout::matchColumns(!settings.decisions.empty()));
    layout.about = {"match",
                    settings.output.commandLine,
                    shownName(settings.texts.file.name),
                    shownName(settings.entries.file.name),
                    settings.pairNaming.hasTextIds,
                    settings.pairNaming.hasEntryIds};
    if (!settings.isPart) output.write(format.heading(layout));
    MatchWriter writer(output, settings.texts.file, settings.run.isStrict);
    std::optional<MutualMatches> mutual;
    bool isWhole = false;
    auto const read = [&](TextRow& row) {
        isWhole = !reader.next(row);
        if (!isWhole) decisions.see(row);
        return !isWhole;
    };
    auto const next = [&, &entries = list](TextRow& row) {
        if (!settings.isMutual) return read(row);
        if (!mutual) mutual.emplace(read, preparer, matchers, entries, decisions);
        return mutual->next(row);
    };
    auto const work = [&, &entries = list](Matcher& matcher, TextRow const& row,
                                           std::u16string const& units) -> LineResult {
        std::vector<Match> matches =
            mutual ? mutual->of(row) : matcher.matches(units, decisions.rejectedOf(row));
        if (layout.hasDecisions) {
            for (Match& match : matches)
                match.isAccepted = decisions.isAccepted(decisions.nameOf(row), match.index);
        }
        bool const isWritten = matches.empty() ? settings.printsUnmatched : settings.printsMatched;
        if (isWritten && settings.output.showsDifferences)
            matcher.markDifferences(matches, row.text, units, preparer);
        return {
            isWritten ? format.matches(layout, row, entries, matches) : "", {}, !matches.empty()};
    };
    Status const status = run(
        matchers, preparer, next, work,
        [&](TextRow const& row, std::string const& error) {
            return format.failure(layout, row, error);
        },
        writer);
    if (writer.isWhole()) output.write(format.ending());
    output.flush();
    // Other parts may have the rest.
    if (isWhole && !settings.isPart) decisions.requireAllSeen();
    return settings.isPart && writer.isWhole() ? Status::Found : status;
}

}  // namespace near_text
