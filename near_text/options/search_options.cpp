#include "near_text/options/definition.h"
#include "near_text/options/output_options.h"
#include "near_text/options/terms_options.h"
#include "near_text/options/values.h"

namespace near_text {

namespace {

struct Given {
    std::string text;
    FileOptions files;
    std::string dictionary;
    std::string separator;
    TermsOptions terms;
    Wanted wanted;
    OutputOptions output;
    RunOptions run;
    bool isIndices = false;
    bool isExplained = false;
    std::vector<std::size_t> explainedPlaces;
};

void addDictionary(CLI::App& command, Given& given) {
    CLI::Option* const dictionary =
        command
            .add_option("--dictionary", given.dictionary,
                        "The entries as one list, used as it is; - reads standard input")
            ->type_name("FILE")
            ->excludes("--entries")
            ->group(kFilesGroup);
    dictionary->needs(command
                          .add_option("--separator", given.separator,
                                      "The character that separates the entries of the list")
                          ->type_name("C")
                          ->needs(dictionary)
                          ->group(kFilesGroup));
}

void addOutput(CLI::App& command, Given& given) {
    given.output.addTo(command);
    command
        .add_flag("--indices", given.isIndices,
                  "Print only the add-in's own answer: the indices, joined by commas")
        ->group(kOutputGroup);
    command
        .add_flag("--explain", given.isExplained,
                  "Show the words that cancelled, what was left, the limit and the distance of "
                  "each match")
        ->group(kOutputGroup);
    command
        .add_option("--explain-line", given.explainedPlaces,
                    "Explain the entry in this line (or place in the list), whether it matches or "
                    "not; may be given several times")
        ->type_name("N")
        ->expected(1)
        ->transform(numberCheck(1))
        ->take_all()
        ->group(kOutputGroup);
}

std::variant<Source, WholeList> entries(Given const& given) {
    if (given.files.hasEntries()) return given.files.entries();
    std::u16string const separator = argumentUnits("--separator", given.separator);
    if (separator.size() != 1) {
        refuse("--separator", "must be a single UTF-16 unit, not '" + given.separator + '\'');
    }
    return WholeList{given.files.other(given.dictionary), separator[0]};
}

void validate(Given const& given) {
    if (given.files.hasEntries() == !given.dictionary.empty()) {
        throw std::runtime_error("--entries or --dictionary is required");
    }
    bool const isExplained = given.isExplained || !given.explainedPlaces.empty();
    if (given.files.hasEntryColumn() && !given.files.hasEntries()) {
        refuse("--entry-column", "has no effect without --entries");
    }
    if (isExplained && !given.output.isForEyes()) {
        refuse("--format", "explanations come in the format text only");
    }
    if (given.isIndices && (isExplained || !given.wanted.isAll() || !given.output.isForEyes())) {
        refuse("--indices",
               "prints the add-in's bare answer, without --best, --top, --format or --explain");
    }
    if (given.isIndices && given.terms.isSameNumbers()) {
        refuse("--indices", "prints the add-in's bare answer, without --same-numbers");
    }
    if (given.isIndices && given.output.isColourDemanded())
        refuse("--indices", "prints the add-in's bare answer, without --color");
}

ReadSettings define(CLI::App& command) {
    auto const given = std::make_shared<Given>();
    command
        .add_option("TEXT", given->text,
                    "What to look for, at most 1000 UTF-16 units; if it begins with a dash, put -- "
                    "before it and all options before that")
        ->type_name("")
        ->required();
    given->files.addEntries(command);
    given->files.addReading(command);
    addDictionary(command, *given);
    given->terms.addTo(command);
    addWanted(command, given->wanted);
    addOutput(command, *given);
    given->run.addTruncate(command);
    return [given](AddInSettings const& addIn) -> Settings {
        validate(*given);
        argumentUnits("TEXT", given->text);
        return TextSearchSettings{addIn,
                                  given->text,
                                  entries(*given),
                                  given->terms.settings(given->files),
                                  given->wanted,
                                  given->output.settings(given->files),
                                  given->isIndices,
                                  given->isExplained,
                                  given->explainedPlaces,
                                  given->run.settings().isTruncating};
    };
}

}  // namespace

Definition const kSearchDefinition = {
    "search",
    {"find the entries of a list that are similar to a text",
     "Prints the matching entries, the nearest first. Each has its nearness (the highest "
     "percentage at which the add-in still finds it), the distance and its limit, the line "
     "number, and the add-in's index. Indices count from 0; an entry without a word has none.",
     "0 found, 1 nothing found, 2 an error",
     {"near_text search \"claw hammer\" --entries catalogue.txt --percent 60",
      "near_text search \"claw hammer\" --entries catalogue.txt --explain-line 7"}},
    define};

}  // namespace near_text
