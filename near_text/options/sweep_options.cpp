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

ReadSettings define(CLI::App& command) {
    auto const given = std::make_shared<Given>();
    given->files.addTexts(command, false);
    given->files.addEntries(command, false);
    command.get_option("--entries")->required();
    given->files.addReading(command);
    addCommaList(command, "-p,--percent", given->percents,
                 "Percentages, separated by commas. Default: 95 to 50 in steps of 5")
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
    given->run.addTo(command);
    given->run.addTruncate(command);
    return [given](AddInSettings const& addIn) -> Settings {
        OutputSettings const output = given->output.settings(given->files);
        SearchSettings search = given->terms.settings(given->files);
        std::vector<int> const percents = percentsOf(given->percents);
        search.percentages = {percents[0], percents[0]};
        given->files.validateIds(!given->pairs.empty(), "--pairs");
        std::optional<TextFile> pairs;
        if (!given->pairs.empty()) pairs = given->files.other(given->pairs);
        return SweepSettings{addIn,
                             given->files.texts(),
                             given->files.entries(),
                             search,
                             percents,
                             pairs,
                             given->files.pairNaming(),
                             output,
                             given->run.settings()};
    };
}

}  // namespace

Definition const kSweepDefinition = {
    "sweep",
    {"count what a match finds at several percentages",
     "Helps to choose a percentage. For each one it prints how many texts find no entry, one and "
     "several, how many matches there are, and how many of them remain if only the best of each "
     "text are kept.\n\n"
     "With --pairs it also prints how many of the known pairs are found and how many other matches "
     "there are, for all matches and for the best alone, and for how many of the texts that have a "
     "known pair the best matches include one.",
     "0 something was found at the lowest percentage, 1 nothing was found, 2 a line or the run "
     "failed, 128 plus the signal's number if interrupted",
     {"near_text sweep --texts supplier.txt --entries catalogue.txt --prepare --pairs pairs.tsv"}},
    define};

}  // namespace near_text
