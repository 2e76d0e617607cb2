#include "near_text/commands/commands.h"
#include "near_text/input/source.h"
#include "near_text/options/search_options.h"
#include "near_text/run/run.h"

namespace near_text {

namespace {

struct MatchOptions {
    SourceOptions sources;
    SearchOptions search;
    WantedOptions wanted;
    FormatOptions format;
    JobOptions jobs;
    bool isUnnumbered = false;
    bool isUnheaded = false;
    bool isUnmatched = false;
};

Status match(Program& program, MatchOptions const& options) {
    Preparation const& preparation = options.search.preparing.preparation;
    SearchTerms const terms = options.search.terms(options.sources.reading.encoding);
    auto const [list, entryColumns] =
        readEntries(options.sources.entries, options.sources.reading, preparation);
    Matchers matchers(program, options.jobs, list, terms, options.wanted.wanted);
    Interrupt const interrupt;
    RowReader reader(options.sources.texts, options.sources.reading, kLongestText,
                     interrupt.descriptor());
    Format const& format = options.format.format();
    options.format.applyTo(program.output);
    RowLayout const layout(!options.isUnnumbered, options.format.delimiter, reader.keptNames(),
                           entryColumns);
    if (!options.isUnheaded) program.output.write(format.heading(layout));
    MatchWriter writer(program.output, options.sources.texts.file, options.jobs.isStrict,
                       interrupt);
    auto const work = [&, &entries = list](Matcher& matcher, TextRow const& row,
                                           std::u16string const& units) -> LineResult {
        std::vector<Match> const matches = matcher.matches(units);
        bool const isWritten = matches.empty() || !options.isUnmatched;
        return {
            isWritten ? format.matches(layout, row, entries, matches) : "", {}, !matches.empty()};
    };
    return run(
        matchers, preparation, [&](TextRow& row) { return reader.next(row); }, work,
        [&](TextRow const& row, std::string const& error) {
            return format.failure(layout, row, error);
        },
        writer, interrupt);
}

void settle(MatchOptions& options) {
    options.sources.settle(options.format);
    options.search.settle();
    if (options.isUnheaded && !options.format.format().hasHeading) {
        refuse("--no-heading", "has no effect in the format " + options.format.name);
    }
    if (!options.isUnmatched) return;
    if (!options.wanted.wanted.isAll()) {
        refuse("--unmatched", "prints no matches, so --best and --top have no effect");
    }
    if (!options.sources.entries.keep.empty()) {
        refuse("--unmatched", "prints no matches, so --keep-entry has no effect");
    }
}

}  // namespace

void addMatch(Program& program) {
    auto const options = std::make_shared<MatchOptions>();
    CLI::App& command = program.addCommand(
        "match",
        {"search for each line of one file among the lines of another",
         "Prints what each text finds, in the order of the texts and as soon as it is known. Each "
         "match has its nearness (the highest percentage at which the add-in still finds it), the "
         "distance and its limit, the line number of the entry, the add-in's index, and the "
         "entry.\n\n"
         "A text that is too long, contains a NUL or cannot be decoded, or whose row the output's "
         "encoding cannot write, is reported, and the error takes its place in the output. When a "
         "signal ends the run, everything finished by then "
         "has been written, and no line is cut short.",
         "0 at least one text matched, 1 none matched, 2 a line or the run failed, 128 plus the "
         "signal's number if interrupted",
         {"near_text match --texts supplier.txt --entries catalogue.txt --prepare --percent 60 "
          "--best",
          "near_text match --texts orders.csv --text-column name --keep id --entries stock.csv "
          "--entry-column title --keep-entry code --format csv --best"}});
    options->sources.addTexts(command);
    options->sources.addEntries(command);
    command.get_option("--entries")->required();
    options->sources.addReading(command);
    options->search.addTo(command);
    options->wanted.addTo(command);
    options->format.addTo(command);
    command
        .add_flag("-u,--unmatched", options->isUnmatched, "Print only the texts that found nothing")
        ->group(kOutputGroup);
    command
        .add_flag("--no-numbers", options->isUnnumbered,
                  "Leave out the line numbers of the texts, so that the parts of a file give the "
                  "same lines as the whole")
        ->group(kOutputGroup);
    command
        .add_flag("--no-heading", options->isUnheaded,
                  "Leave out the heading, so that parts can be joined")
        ->group(kOutputGroup);
    options->jobs.addTo(command);
    command.callback([&program, options] {
        settle(*options);
        program.command = [&program, options] { return match(program, *options); };
    });
}

}  // namespace near_text
