#include <optional>

#include "near_text/commands/commands.h"
#include "near_text/commands/table_note.h"
#include "near_text/matching/read_entries.h"
#include "near_text/output/output.h"
#include "near_text/run/mutual_matches.h"

namespace near_text {

Status execute(MatchSettings const& settings) {
    noteTables(settings.texts, settings.entries);
    Preparer const preparer = readPreparer(settings.search);
    SearchTerms const terms = readTerms(settings.search);
    auto const [list, entryColumns] = readEntries(settings.entries, preparer);
    Matchers matchers(settings.addIn, settings.run, list, terms, settings.wanted);
    RowReader reader(settings.texts, kLongestText);
    Output output(settings.output.encoding);
    Format const& format = *settings.output.format;
    RowLayout const layout(!settings.isPart, settings.output.delimiter, reader.keptNames(),
                           entryColumns);
    if (!settings.isPart) output.write(format.heading(layout));
    MatchWriter writer(output, settings.texts.file, settings.run.isStrict);
    std::optional<MutualMatches> mutual;
    auto const read = [&](TextRow& row) { return reader.next(row); };
    auto const next = [&, &entries = list](TextRow& row) {
        if (!settings.isMutual) return read(row);
        if (!mutual) mutual.emplace(read, preparer, matchers, entries);
        return mutual->next(row);
    };
    auto const work = [&, &entries = list](Matcher& matcher, TextRow const& row,
                                           std::u16string const& units) -> LineResult {
        std::vector<Match> const matches = mutual ? mutual->of(row) : matcher.matches(units);
        bool const isWritten = matches.empty() ? settings.printsUnmatched : settings.printsMatched;
        return {
            isWritten ? format.matches(layout, row, entries, matches) : "", {}, !matches.empty()};
    };
    Status const status = run(
        matchers, preparer, next, work,
        [&](TextRow const& row, std::string const& error) {
            return format.failure(layout, row, error);
        },
        writer);
    output.flush();
    return settings.isPart && writer.isComplete() ? Status::Found : status;
}

}  // namespace near_text
