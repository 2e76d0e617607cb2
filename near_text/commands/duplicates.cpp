// Each entry is searched for in the whole list. Which of two is the text decides on their lengths,
// so it may be that only one finds the other. A pair is printed once: under the earlier entry if
// that finds the later, else under the later. For that the add-in is asked again about the earlier
// ones that were found, and nothing need be remembered, however many pairs there are.
#include <algorithm>
#include <mutex>

#include "near_text/commands/commands.h"
#include "near_text/input/source.h"
#include "near_text/matching/groups.h"
#include "near_text/options/search_options.h"
#include "near_text/run/run.h"

namespace near_text {

namespace {

struct DuplicatesOptions {
    SourceOptions sources;
    SearchOptions search;
    FormatOptions format;
    JobOptions jobs;
    bool isGrouped = false;
};

// Whether the entry at `text`, taken as a text, finds the one at `entry`.
bool finds(Matcher& matcher, EntryList const& list, Percentages percentages, unsigned long text,
           unsigned long entry) {
    try {
        return !matcher.search.findAmong(list.units(text), percentages, {entry}).empty();
    } catch (Refused const&) {
        return false;  // it is too long for a text, which is reported with its own line
    }
}

// The pairs to print under the entry at `index`, as its matches.
std::vector<Match> pairs(Matcher& matcher, EntryList const& list, Percentages percentages,
                         unsigned long index) {
    Indices others = matcher.search.find(list.units(index), percentages);
    std::erase_if(others, [&](unsigned long other) {
        return other == index || (other < index && finds(matcher, list, percentages, other, index));
    });
    std::vector<Match> matches = matcher.measured(list.units(index), others);
    for (Match& match : matches) {
        match.percent = std::max(match.percent, matcher.nearnessOf(list.units(match.index), index));
    }
    return matches;
}

// What cannot be encoded is left empty, and `complainOf` is told.
Table groupTable(
    Groups& groups, EntryList const& list, Cells const& keptColumns, Output const& output,
    std::function<void(Entry const& entry, std::string const& error)> const& complainOf) {
    Table table = {{{"group", true}, {"line", true}, {"text", false}}, {}};
    for (std::string const& name : keptColumns)
        table.columns.push_back({name, false});
    std::size_t number = 0;
    for (auto const& group : groups.joined()) {
        ++number;
        for (std::size_t const index : group) {
            Entry const& entry = list.entries[index];
            Cells texts = entry.kept;
            texts.insert(texts.begin(), entry.text);
            try {
                for (std::string const& text : texts)
                    output.requireEncodable(text);
            } catch (NotText const& error) {
                complainOf(entry, error.what());
                texts.assign(texts.size(), {});
            }
            Cells& row =
                table.rows.emplace_back(Cells{std::to_string(number), std::to_string(entry.place)});
            row.insert(row.end(), texts.begin(), texts.end());
        }
    }
    return table;
}

Status duplicates(Program& program, DuplicatesOptions const& options) {
    Preparation const& preparation = options.search.preparing.preparation;
    SearchTerms const terms = options.search.terms(options.sources.reading.encoding);
    auto const file = readEntries(options.sources.entries, options.sources.reading, preparation,
                                  /*beginsWithSeparator=*/true);
    EntryList const& list = file.list;
    Matchers matchers(program, options.jobs, list, terms, {});
    Interrupt const interrupt;
    Format const& format = options.format.format();
    options.format.applyTo(program.output);
    RowLayout const layout =
        options.isGrouped
            ? RowLayout(true, options.format.delimiter, file.keptNames, {},
                        {"group", "line", "text"})
            : RowLayout(true, options.format.delimiter, file.keptNames, file.keptNames);
    if (!options.isGrouped) program.output.write(format.heading(layout));
    MatchWriter writer(program.output, options.sources.entries.file, options.jobs.isStrict,
                       interrupt);

    Groups groups(options.isGrouped ? list.entries.size() : 0);
    std::mutex groupsMutex;
    auto const work = [&](Matcher& matcher, TextRow const& row,
                          std::u16string const&) -> LineResult {
        auto const entry =
            std::lower_bound(list.entries.begin(), list.entries.end(), row.number,
                             [](Entry const& e, std::size_t place) { return e.place < place; });
        auto const index = static_cast<unsigned long>(entry - list.entries.begin());
        std::vector<Match> const matches = pairs(matcher, list, terms.percentages, index);
        if (matches.empty()) return {};
        if (!options.isGrouped) return {format.matches(layout, row, list, matches), {}, true};
        std::lock_guard const lock(groupsMutex);
        for (Match const& match : matches)
            groups.join(index, match.index);
        return {{}, {}, true};
    };
    auto const failureText = [&](TextRow const& row, std::string const& error) {
        return options.isGrouped ? std::string() : format.failure(layout, row, error);
    };
    auto next = [&, at = list.entries.begin()](TextRow& row) mutable {
        if (at == list.entries.end()) return false;
        row.number = at->place;
        row.text = at->text;
        row.kept = at->kept;
        ++at;
        return true;
    };
    Status status = run(matchers, preparation, next, work, failureText, writer, interrupt);
    if (options.isGrouped && interrupt.signal() == 0) {
        auto const complainOf = [&](Entry const& entry, std::string const& error) {
            complain(placeOf(shownName(options.sources.entries.file.name), entry.place) + error);
            status = Status::Error;
        };
        program.output.write(
            format.table(options.format.delimiter,
                         groupTable(groups, list, layout.textColumns, program.output, complainOf)));
    }
    return status;
}

void settle(DuplicatesOptions& options) {
    options.sources.settle(options.format);
    options.search.settle();
}

}  // namespace

void addDuplicates(Program& program) {
    auto const options = std::make_shared<DuplicatesOptions>();
    CLI::App& command = program.addCommand(
        "duplicates",
        {"find the near pairs within one file",
         "Searches for each line of a file among all its lines and prints each pair once: under "
         "the earlier line, or under the later one if only that one finds the other. Every line, "
         "the first one too, has the length that it has after a separator. No line is paired with "
         "itself.",
         "0 pairs were found, 1 none was found, 2 a line or the run failed, 128 plus the signal's "
         "number if interrupted",
         {"near_text duplicates catalogue.txt --prepare --percent 85 --groups"}});
    options->sources.addFile(command);
    options->search.addTo(command);
    options->format.addTo(command);
    command
        .add_flag(
            "-g,--groups", options->isGrouped,
            "Print groups instead of pairs: lines that are joined by a pair or a chain of pairs")
        ->group(kOutputGroup);
    options->jobs.addTo(command);
    command.callback([&program, options] {
        settle(*options);
        program.command = [&program, options] { return duplicates(program, *options); };
    });
}

}  // namespace near_text
