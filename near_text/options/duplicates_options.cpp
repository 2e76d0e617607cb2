#include "near_text/options/definition.h"
#include "near_text/options/output_options.h"
#include "near_text/options/terms_options.h"
#include "near_text/options/values.h"

namespace near_text {

namespace {

struct Given {
    FileOptions files;
    TermsOptions terms;
    OutputOptions output;
    RunOptions run;
    bool isGrouped = false;
};

ReadSettings define(CLI::App& command) {
    auto const given = std::make_shared<Given>();
    given->files.addFile(command);
    given->terms.addTo(command);
    given->output.addTo(command);
    command
        .add_flag(
            "-g,--groups", given->isGrouped,
            "Print groups instead of pairs: lines that are joined by a pair or a chain of pairs")
        ->group(kOutputGroup);
    given->run.addTo(command);
    given->run.addTruncate(command);
    return [given](AddInSettings const& addIn) -> Settings {
        if (given->isGrouped && given->output.isPage())
            refuse("--groups", "prints no pairs, which are what the format html shows");
        if (given->isGrouped && given->output.isColourDemanded())
            refuse("--color", "has no effect with --groups, which prints no pairs");
        return DuplicatesSettings{addIn,
                                  given->files.texts(),
                                  given->terms.settings(given->files),
                                  given->output.settings(given->files),
                                  given->run.settings(),
                                  given->isGrouped};
    };
}

}  // namespace

Definition const kDuplicatesDefinition = {
    "duplicates",
    {"find the near pairs within one file",
     "Searches for each line of a file among all its lines and prints each pair once: under the "
     "earlier line, or under the later one if only that one finds the other. Every line, the first "
     "one too, has the length that it has after a separator. No line is paired with itself. "
     "The file has to be valid text as a whole: the first line that is not ends the run.",
     "0 pairs were found, 1 none was found, 2 a line or the run failed, 128 plus the signal's "
     "number if interrupted",
     {"near_text duplicates catalogue.txt --prepare --percent 85 --groups"}},
    define};

}  // namespace near_text
