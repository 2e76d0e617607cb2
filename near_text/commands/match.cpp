#include "near_text/commands/commands.h"
#include "near_text/commands/table_note.h"
#include "near_text/matching/read_entries.h"
#include "near_text/output/output.h"

namespace near_text {

Status execute(MatchSettings const& settings) {
    noteTables(settings.texts, settings.entries);
    SearchTerms const terms = readTerms(settings.search);
    auto const [list, entryColumns] = readEntries(settings.entries, settings.search.preparer);
    Matchers matchers(settings.addIn, settings.run, list, terms, settings.wanted);
    RowReader reader(settings.texts, kLongestText);
    Output output(settings.output.encoding);
    Format const& format = *settings.output.format;
    RowLayout const layout(settings.isNumbered, settings.output.delimiter, reader.keptNames(),
                           entryColumns);
    if (settings.hasHeading) output.write(format.heading(layout));
    MatchWriter writer(output, settings.texts.file, settings.run.isStrict);
    auto const work = [&, &entries = list](Matcher& matcher, TextRow const& row,
                                           std::u16string const& units) -> LineResult {
        std::vector<Match> const matches = matcher.matches(units);
        bool const isWritten = matches.empty() || !settings.isUnmatched;
        return {
            isWritten ? format.matches(layout, row, entries, matches) : "", {}, !matches.empty()};
    };
    Status const status = run(
        matchers, settings.search.preparer, [&](TextRow& row) { return reader.next(row); }, work,
        [&](TextRow const& row, std::string const& error) {
            return format.failure(layout, row, error);
        },
        writer);
    output.flush();
    return status;
}

}  // namespace near_text
