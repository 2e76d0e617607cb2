#include <algorithm>

#include "near_text/input/number.h"
#include "near_text/options/definition.h"
#include "near_text/options/output_options.h"
#include "near_text/options/terms_options.h"
#include "near_text/options/values.h"

namespace near_text {

namespace {

struct Given {
    FileOptions files;
    TermsOptions terms;
    std::vector<std::string> percents;
    std::string pairs;
    bool isWithin = false;
    bool hasAllColumns = false;
    OutputOptions output;
    RunOptions run;
};

// Ascending.
std::vector<int> percentsOf(std::vector<std::string> const& values) {
    if (values.empty()) return {50, 55, 60, 65, 70, 75, 80, 85, 90, 95};
    std::vector<int> percents;
    for (std::string const& value : values) {
        auto const percent = parseNumber<int>(value, 0, 100);
        if (!percent) refuse("--percent", '\'' + value + "' is not a whole number from 0 to 100");
        percents.push_back(*percent);
    }
    std::sort(percents.begin(), percents.end());
    auto const twice = std::adjacent_find(percents.begin(), percents.end());
    if (twice != percents.end()) refuse("--percent", std::to_string(*twice) + " is given twice");
    return percents;
}

void validate(Given const& given) {
    if (given.isWithin) given.files.validateWithin();
    if (!given.isWithin && !given.files.hasEntries()) {
        throw std::runtime_error("--entries or --duplicates is required");
    }
    if (given.hasAllColumns && given.pairs.empty()) {
        refuse("--all-columns", "has no effect without --pairs");
    }
}

ReadSettings define(CLI::App& command) {
    auto const given = std::make_shared<Given>();
    given->files.addTexts(command, false);
    given->files.addEntries(command, false);
    command
        .add_flag("--duplicates", given->isWithin,
                  "Search for the texts among themselves, as the command duplicates does. The "
                  "pairs then name two texts each, in either order")
        ->group(kFilesGroup);
    given->files.addReading(command);
    addCommaList(
        command, "-p,--percent", given->percents,
        "Percentages, separated by commas. Default: 95 to 50 in steps of 5. With --threshold "
        "and --short-percent they are those of long entries, with --long-percent those of "
        "short ones")
        .type_name("PERCENTS")
        ->group(kMatchesGroup);
    command
        .add_option(
            "--pairs", given->pairs,
            "Known pairs: a table, with tabs, semicolons or commas, whose first two columns "
            "are the line of the text and the line of the entry, or their ids. In a column with "
            "the "
            "heading decision, rejected says that they are none")
        ->type_name("FILE")
        ->group(kFilesGroup);
    given->files.addIds(command);
    given->terms.addTo(command, false);
    given->output.addTo(command, false);
    command
        .add_flag("--all-columns", given->hasAllColumns,
                  "With --pairs, print the counts as well from which the others are made: how many "
                  "texts have no such match, one and several; the other matches, the known pairs, "
                  "the texts that have a known pair and those of them for which one is found")
        ->group(kOutputGroup);
    given->run.addTo(command);
    given->run.addTruncate(command);
    return [given](AddInSettings const& addIn) -> Settings {
        OutputSettings const output = given->output.settings(given->files);
        SearchSettings search = given->terms.settings(given->files);
        std::vector<int> const percents = percentsOf(given->percents);
        Steps const steps = given->terms.steps(percents);
        search.percentages = steps[0];
        validate(*given);
        given->files.validateIds(!given->pairs.empty(), "--pairs");
        std::optional<TextFile> pairs;
        if (!given->pairs.empty()) pairs = given->files.other(given->pairs);
        std::optional<Source> entries;
        if (!given->isWithin) entries = given->files.entries();
        return SweepSettings{addIn,
                             given->files.texts(),
                             entries,
                             search,
                             percents,
                             steps,
                             pairs,
                             given->files.pairNaming(given->isWithin),
                             given->hasAllColumns,
                             output,
                             given->run.settings()};
    };
}

}  // namespace

Definition const kSweepDefinition = {
    "sweep",
    {"tell how good matches are at several percentages",
     "Helps to choose a percentage. For each one it prints how many texts find no entry, one and "
     "several, how many matches there are, and how many of them remain if only the best of each "
     "text are kept.\n\n"
     "With --pairs it prints a row for each percentage for all matches, for the best alone and for "
     "the mutual ones, as match keeps them: how many there are, how many known pairs are found, "
     "precision (found of the matches, if there are any), recall (found of the known pairs) and "
     "F1, the harmonic mean of both. The highest F1 of each is marked. So all pairs among the "
     "texts have to be known, or the texts cut down to those whose pairs are.",
     "0 something was found at the lowest percentage, 1 nothing was found, 2 a line or the run "
     "failed, 128 plus the signal's number if interrupted",
     {"near_text sweep --texts supplier.txt --entries catalogue.txt --prepare --pairs pairs.tsv",
      "near_text sweep --texts customers.csv --text-column name --text-id id --duplicates "
      "--prepare "
      "--pairs pairs.csv"}},
    define};

}  // namespace near_text
