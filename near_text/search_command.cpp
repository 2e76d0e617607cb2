#include <algorithm>
#include <limits>
#include <optional>

#include "near_text/commands.h"
#include "near_text/explanation_text.h"
#include "near_text/input.h"
#include "near_text/search_options.h"
#include "stand_in_host/whitespace.h"

namespace near_text {

namespace {

struct SearchCommand {
    std::string text;
    std::string entriesFile;
    std::string dictionaryFile;
    std::string separator;
    SearchOptions search;
    bool isShown = false;
    bool isExplained = false;
    std::vector<std::size_t> explainedPlaces;
};

EntryList readList(SearchCommand const& options) {
    if (!options.entriesFile.empty()) return entriesFromLines(options.entriesFile);
    std::u16string const separator = argumentUnits("--separator", options.separator);
    if (separator.size() != 1) {
        throw std::runtime_error("--separator: not one UTF-16 unit: '" + options.separator + '\'');
    }
    if (stand_in_host::isWhitespace(separator[0]))
        complain("note: whitespace does not separate entries");
    return entriesFromFile(options.dictionaryFile, separator[0]);
}

std::string rightAligned(std::string const& text, std::size_t width) {
    return std::string(width - std::min(width, text.size()), ' ') + text;
}

// Matches, and the entries to explain, as a table.
class Table {
public:
    Table(Program& target, SearchCommand const& shownOptions, EntryList const& entryList,
          stand_in_host::SearchArguments const& arguments,
          std::vector<unsigned long> const& matching)
        : program(target),
          options(shownOptions),
          list(entryList),
          matches(matching),
          searchArguments(arguments),
          placeName(options.entriesFile.empty() ? "place" : "line") {}

    void write() {
        std::vector<unsigned long> const asked = askedIndices();
        bool const showsMatches = options.isShown || options.isExplained;
        if (showsMatches ? !matches.empty() : !asked.empty()) header();
        if (showsMatches) {
            for (unsigned long const index : matches)
                row(index, options.isExplained);
        }
        for (unsigned long const index : asked)
            row(index, true);
    }

private:
    std::vector<unsigned long> askedIndices() {
        std::vector<unsigned long> indices;
        for (std::size_t const place : options.explainedPlaces) {
            auto const entry = std::find_if(list.entries.begin(), list.entries.end(),
                                            [&](Entry const& e) { return e.place == place; });
            if (entry != list.entries.end()) {
                indices.push_back(static_cast<unsigned long>(entry - list.entries.begin()));
                continue;
            }
            std::string const name = placeName + ' ' + std::to_string(place);
            if (place == 0 || place > list.places) throw std::runtime_error("no " + name);
            complain(name + " holds no word, so it is no entry and has no index");
        }
        return indices;
    }

    void header() {
        program.output.write("index  " + rightAligned(placeName, kPlaceWidth) + "  entry\n");
    }

    void row(unsigned long index, bool isExplained) {
        Entry const& entry = list.entries.at(index);
        program.output.write(rightAligned(std::to_string(index), kIndexWidth) + "  " +
                             rightAligned(std::to_string(entry.place), kPlaceWidth) + "  " +
                             onOneLine(entry.text) + '\n');
        if (!isExplained) return;
        auto const excluded =
            stand_in_host::readExclusions(searchArguments.exclusions, searchArguments.separator);
        stand_in_host::SearchExplanation const explanation(
            searchArguments.text, excluded, searchArguments.lengthThreshold,
            searchArguments.percentShort, searchArguments.percentLong);
        stand_in_host::SideBySide const sides = explanation.explain(
            stand_in_host::readEntry(list.units(index), list.isBehindSeparator(index)));
        requireAgreement(sides, std::binary_search(matches.begin(), matches.end(), index));
        program.output.write(explanationText(sides, "text", "entry"));
    }

    static constexpr std::size_t kIndexWidth = 5;
    static constexpr std::size_t kPlaceWidth = 5;

    Program& program;
    SearchCommand const& options;
    EntryList const& list;
    std::vector<unsigned long> const& matches;
    stand_in_host::SearchArguments const& searchArguments;
    std::string const placeName;
};

int search(Program& program, SearchCommand const& options) {
    auto const component = program.makeComponent();
    std::u16string const text = argumentUnits("TEXT", options.text);
    std::u16string const exclusions = options.search.exclusions();
    EntryList const list = readList(options);
    stand_in_host::SearchArguments const arguments =
        options.search.arguments(text, list, exclusions);
    auto const answer = component->search(arguments);
    if (!answer) throw std::runtime_error(component->lastReport());
    auto const matches = stand_in_host::parseIndexList(*answer);
    if (options.isShown || options.isExplained || !options.explainedPlaces.empty()) {
        Table(program, options, list, arguments, matches).write();
    } else if (!matches.empty()) {
        program.output.write(*answer + '\n');
    }
    return matches.empty() ? kNotFound : kFound;
}

}  // namespace

void addSearch(Program& program) {
    auto const options = std::make_shared<SearchCommand>();
    CLI::App& command = program.addCommand(
        "search", "Find the entries of a list that are alike to a text",
        "Prints the indices of the matching entries as the add-in gives them (status 0), or "
        "nothing (status 1). They count from 0, and only entries that hold a word; --show maps "
        "them to line numbers.",
        "near_text search \"claw hammer\" --entries catalogue.txt --short 60 --show");
    command
        .add_option("TEXT", options->text,
                    "What to look for, of at most 1000 UTF-16 units; behind -- if it begins with -")
        ->type_name("")
        ->required();
    CLI::Option* const entries =
        command
            .add_option("--entries", options->entriesFile, "Entries, one a line; - reads them in")
            ->type_name("FILE");
    CLI::Option* const dictionary =
        command
            .add_option("--dictionary", options->dictionaryFile,
                        "Entries as one list, taken as it stands; - reads it in")
            ->type_name("FILE")
            ->excludes(entries);
    CLI::Option* const separator =
        command.add_option("--separator", options->separator, "What separates the list's entries")
            ->type_name("C")
            ->needs(dictionary);
    dictionary->needs(separator);
    options->search.addTo(command);
    command.add_flag("--show", options->isShown,
                     "Print each match as index, line number (or place in the list) and entry");
    command.add_flag("--explain", options->isExplained,
                     "As --show, with the words that cancelled, what was left, the limit and the "
                     "distance of each match");
    command
        .add_option("--explain-line", options->explainedPlaces,
                    "Explain the entry in this line (or place), match or not; may be given again")
        ->type_name("N")
        ->expected(1)
        ->check(CLI::Range(1, std::numeric_limits<int>::max()).description(""))
        ->take_all();
    command.callback([&program, options, entries, dictionary] {
        if (entries->empty() && dictionary->empty()) {
            throw CLI::RequiredError("--entries or --dictionary");
        }
        program.command = [&program, options] { return search(program, *options); };
    });
}

}  // namespace near_text
