#include "near_text/commands.h"
#include "near_text/run.h"
#include "near_text/search_options.h"
#include "near_text/source.h"

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
    SearchTerms const terms = options.search.terms();
    auto const [list, entryColumns] =
        readEntries(options.sources.entries, options.sources.reading, preparation);
    Matchers matchers(program, options.jobs, list, terms, options.wanted.wanted);
    Interrupt const interrupt;
    RowReader reader(options.sources.texts, options.sources.reading, kLongestText,
                     interrupt.descriptor());
    Format const& format = options.format.format();
    options.format.applyTo(program.output);
    Shape const shape(!options.isUnnumbered, options.format.delimiter, reader.keptNames(),
                      entryColumns);
    if (!options.isUnheaded) program.output.write(format.heading(shape));
    MatchWriter writer(program.output, options.sources.texts.file, options.jobs.isStrict,
                       interrupt);
    auto const work = [&, &entries = list](Matcher& matcher, TextRow const& row,
                                           std::u16string const& units) -> LineResult {
        std::vector<Match> const matches = matcher.matches(units);
        bool const isWritten = matches.empty() || !options.isUnmatched;
        return {
            isWritten ? format.matches(shape, row, entries, matches) : "", {}, !matches.empty()};
    };
    return run(
        matchers, preparation, [&](TextRow& row) { return reader.next(row); }, work,
        [&](TextRow const& row, std::string const& error) {
            return format.failure(shape, row, error);
        },
        writer, interrupt);
}

void settle(MatchOptions& options) {
    options.sources.settle(options.format);
    options.search.settle();
    if (options.isUnheaded && !options.format.format().hasHeading) {
        refuse("--no-heading", "does nothing in the format " + options.format.name);
    }
    if (!options.isUnmatched) return;
    if (!options.wanted.wanted.isAll()) {
        refuse("--unmatched", "prints no match, so --best and --top do nothing");
    }
    if (!options.sources.entries.keep.empty()) {
        refuse("--unmatched", "prints no match, so --keep-entry does nothing");
    }
}

}  // namespace

void addMatch(Program& program) {
    auto const options = std::make_shared<MatchOptions>();
    CLI::App& command = program.addCommand(
        "match", "Search for each line of one file among the lines of another",
        "Prints what each line of texts finds, in their order and each as soon as it is done: how "
        "near the match is (the highest percentage at which the add-in still finds it), the "
        "distance and its limit, the add-in's index, the entry's line number, the entry. A line of "
        "texts that is too long, holds a NUL or cannot be decoded is reported, and the error "
        "stands in its place.\n\n"
        "Exit status: 0 any text matched, 1 none did, 2 a line or the run failed, 128 and the "
        "signal's number when interrupted. What was finished by then is out, and no line is torn.",
        "near_text match --texts supplier.txt --entries catalogue.txt --prepare --percent 60 "
        "--best");
    options->sources.addTexts(command);
    options->sources.addEntries(command);
    command.get_option("--entries")->required();
    options->sources.addReading(command);
    options->search.addTo(command);
    options->wanted.addTo(command);
    options->format.addTo(command);
    command.add_flag("-u,--unmatched", options->isUnmatched, "Only texts that found nothing");
    command.add_flag(
        "--no-numbers", options->isUnnumbered,
        "Leave the line numbers of the texts out, so that parts of a file give the same "
        "lines as the whole");
    command.add_flag("--no-heading", options->isUnheaded,
                     "Leave the heading out, so that parts can be joined");
    options->jobs.addTo(command);
    command.callback([&program, options] {
        settle(*options);
        program.command = [&program, options] { return match(program, *options); };
    });
}

}  // namespace near_text
