#include <algorithm>
#include <limits>
#include <optional>

#include "near_text/commands/commands.h"
#include "near_text/input/source.h"
#include "near_text/options/search_options.h"
#include "near_text/output/explanation_text.h"
#include "near_text/output/text_format.h"
#include "near_text/run/run.h"

namespace near_text {

namespace {

struct TextSearchOptions {
    std::string text;
    SourceOptions sources;
    std::string dictionaryFile;
    std::string separator;
    SearchOptions search;
    WantedOptions wanted;
    FormatOptions format;
    bool isIndices = false;
    bool isExplained = false;
    std::vector<std::size_t> explainedPlaces;

    Preparation const& preparation() const { return search.preparing.preparation; }
};

EntryFile readList(TextSearchOptions const& options) {
    if (!options.sources.entries.file.name.empty()) {
        return readEntries(options.sources.entries, options.sources.reading, options.preparation());
    }
    std::u16string const separator = argumentUnits("--separator", options.separator);
    if (separator.size() != 1) {
        throw std::runtime_error("--separator: must be a single UTF-16 unit, not '" +
                                 options.separator + '\'');
    }
    return {entriesFromFile({options.dictionaryFile, options.sources.reading.encoding},
                            separator[0], options.preparation()),
            {}};
}

std::string commaList(Indices const& indices) {
    std::string text;
    for (unsigned long const index : indices)
        text += (text.empty() ? "" : ",") + std::to_string(index);
    return text.empty() ? text : text + '\n';
}

// The entries in the places that are to be explained.
Indices askedIndices(TextSearchOptions const& options, EntryList const& list) {
    Indices indices;
    for (std::size_t const place : options.explainedPlaces) {
        auto const entry = std::find_if(list.entries.begin(), list.entries.end(),
                                        [&](Entry const& e) { return e.place == place; });
        if (entry != list.entries.end()) {
            indices.push_back(static_cast<unsigned long>(entry - list.entries.begin()));
            continue;
        }
        std::string const name = (options.sources.entries.file.name.empty() ? "place " : "line ") +
                                 std::to_string(place);
        if (place > list.places) throw std::runtime_error("there is no " + name);
        complain(name + " contains no word, so it is not an entry and has no index");
    }
    return indices;
}

// Matches, or entries that are asked for, with the reasons.
class ExplainedRows {
public:
    ExplainedRows(Program& target, EntryList const& entryList, std::u16string_view text,
                  SearchTerms const& terms)
        : program(target),
          list(entryList),
          excluded(reference::readExclusions(terms.exclusions, list.separator)),
          explanation(text, excluded, terms.threshold, terms.percentages.forShort,
                      terms.percentages.forLong) {}

    void write(unsigned long index, bool isMatch) {
        reference::SideBySide const sides = explanation.explain(
            reference::readEntry(list.units(index), list.isBehindSeparator(index)));
        requireAgreement(sides, isMatch);
        Match const shown = {index, reference::nearness(sides), sides.distance, sides.limit};
        program.output.write(shownMatch(shown, list.entries[index]) + '\n' +
                             explanationText(sides, "text", "entry"));
    }

private:
    Program& program;
    EntryList const& list;
    reference::ExcludedWords const excluded;
    reference::SearchExplanation const explanation;
};

void writeMatches(Program& program, TextSearchOptions const& options, EntryFile const& entries,
                  std::vector<Match> const& matches) {
    Format const& format = options.format.format();
    if (options.format.isForEyes()) {
        std::vector<Match> nearestFirst = matches;
        sortByNearness(nearestFirst);
        for (Match const& match : nearestFirst)
            program.output.write(shownMatch(match, entries.list.entries[match.index]) + '\n');
        return;
    }
    RowLayout const layout(false, options.format.delimiter, {}, entries.keptNames);
    TextRow row;
    row.text = options.text;
    program.output.write(format.heading(layout) +
                         format.matches(layout, row, entries.list, matches));
}

Status search(Program& program, TextSearchOptions const& options) {
    auto const component = program.makeComponent();
    std::u16string const text = options.preparation().prepared(argumentUnits("TEXT", options.text));
    SearchTerms const terms = options.search.terms(options.sources.reading.encoding);
    EntryFile const entries = readList(options);
    Matcher matcher(*component, entries.list, terms, options.wanted.wanted);
    if (options.isIndices) {
        Indices const indices = matcher.search.find(text, terms.percentages);
        program.output.write(commaList(indices));
        return foundIf(!indices.empty());
    }
    options.format.applyTo(program.output);
    std::vector<Match> matches = matcher.matches(text);
    Indices const asked = askedIndices(options, entries.list);
    if (!options.isExplained && options.explainedPlaces.empty()) {
        writeMatches(program, options, entries, matches);
        return foundIf(!matches.empty());
    }
    if (matches.empty() && asked.empty()) return Status::NotFound;
    ExplainedRows rows(program, entries.list, text, terms);
    if (options.isExplained) {
        sortByNearness(matches);
        for (Match const& match : matches)
            rows.write(match.index, true);
    }
    for (unsigned long const index : asked) {
        rows.write(index, !matcher.search.findAmong(text, terms.percentages, {index}).empty());
    }
    return foundIf(!matches.empty());
}

void settle(TextSearchOptions& options) {
    if (options.sources.entries.file.name.empty() == options.dictionaryFile.empty()) {
        throw CLI::RequiredError("--entries or --dictionary");
    }
    options.sources.settle(options.format);
    options.search.settle();
    bool const isExplained = options.isExplained || !options.explainedPlaces.empty();
    if (options.sources.entries.isTable() && options.sources.entries.file.name.empty()) {
        refuse("--entry-column", "has no effect without --entries");
    }
    if (isExplained && !options.format.isForEyes()) {
        refuse("--format", "explanations come in the format text only");
    }
    if (options.isIndices &&
        (isExplained || !options.wanted.wanted.isAll() || !options.format.isForEyes())) {
        refuse("--indices",
               "prints the add-in's bare answer, without --best, --top, --format or --explain");
    }
}

}  // namespace

void addSearch(Program& program) {
    auto const options = std::make_shared<TextSearchOptions>();
    CLI::App& command = program.addCommand(
        "search",
        {"find the entries of a list that are alike to a text",
         "Prints the matching entries, the nearest first. Each has its nearness (the highest "
         "percentage at which the add-in still finds it), the distance and its limit, the line "
         "number, and the add-in's index. Indices count from 0; an entry without a word has none.",
         "0 found, 1 nothing found, 2 an error",
         {"near_text search \"claw hammer\" --entries catalogue.txt --percent 60",
          "near_text search \"claw hammer\" --entries catalogue.txt --explain-line 7"}});
    command
        .add_option("TEXT", options->text,
                    "What to look for, at most 1000 UTF-16 units; if it begins with a dash, put -- "
                    "before it and all options before that")
        ->type_name("")
        ->required();
    options->sources.addEntries(command);
    options->sources.addReading(command);
    CLI::Option* const dictionary =
        command
            .add_option("--dictionary", options->dictionaryFile,
                        "The entries as one list, used as it is; - reads standard input")
            ->type_name("FILE")
            ->excludes("--entries")
            ->group("Files");
    dictionary->needs(command
                          .add_option("--separator", options->separator,
                                      "The character that separates the entries of the list")
                          ->type_name("C")
                          ->needs(dictionary)
                          ->group("Files"));
    options->search.addTo(command);
    options->wanted.addTo(command);
    options->format.addTo(command);
    command
        .add_flag("--indices", options->isIndices,
                  "Print only the add-in's own answer: the indices, joined by commas")
        ->group(kOutputGroup);
    command
        .add_flag("--explain", options->isExplained,
                  "Show the words that cancelled, what was left, the limit and the distance of "
                  "each match")
        ->group(kOutputGroup);
    command
        .add_option("--explain-line", options->explainedPlaces,
                    "Explain the entry in this line (or place in the list), whether it matches or "
                    "not; may be given several times")
        ->type_name("N")
        ->expected(1)
        ->check(CLI::Range(1, std::numeric_limits<int>::max()).description(""))
        ->take_all()
        ->group(kOutputGroup);
    command.callback([&program, options] {
        settle(*options);
        program.command = [&program, options] { return search(program, *options); };
    });
}

}  // namespace near_text
