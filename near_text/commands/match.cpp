#include <optional>

#include "near_text/commands/commands.h"
#include "near_text/matching/id_check.h"
#include "near_text/matching/read_entries.h"
#include "near_text/messages/messages.h"
#include "near_text/output/output.h"
#include "near_text/run/mutual_matches.h"

namespace near_text {

namespace {

void noteEntriesAlike(EntryList const& list, std::string const& file) {
    IdCheck ids;
    for (std::size_t i = 0; i < list.entries.size(); ++i) {
        Entry const entry = list.entry(i);
        ids.see(entry.id, placeOf(file, entry.place));
    }
    ids.noteThoseAlike();
}

}  // namespace

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
    bool isWhole = false, isEmpty = true;
    bool const checksTextIds = format.isPage && settings.pairNaming.hasTextIds;
    IdCheck textIds;
    auto const read = [&](TextRow& row) {
        isWhole = !reader.next(row);
        if (isWhole) return false;
        isEmpty = false;
        decisions.see(row);
        if (checksTextIds && row.fault.empty()) textIds.see(row.id, reader.place());
        return true;
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
    textIds.noteThoseAlike();
    if (format.isPage && settings.pairNaming.hasEntryIds)
        noteEntriesAlike(list, shownName(settings.entries.file.name));
    if (isWhole && isEmpty && !settings.isPart)
        complain("note: " + shownName(settings.texts.file.name) + " contains no text");
    // Other parts may have the rest.
    if (isWhole && !settings.isPart) decisions.requireAllSeen();
    return settings.isPart && writer.isWhole() ? Status::Found : status;
}

}  // namespace near_text
