#include "near_text/options/definition.h"
#include "near_text/options/output_options.h"
#include "near_text/options/terms_options.h"
#include "near_text/options/values.h"

namespace near_text {

namespace {

struct Given {
    FileOptions files;
    TermsOptions terms;
    Wanted wanted;
    OutputOptions output;
    RunOptions run;
    bool isPart = false;
    bool isMatched = false;
    bool isUnmatched = false;
    bool isMutual = false;
    std::vector<std::string> decisions;
};

void addDecisions(CLI::App& command, Given& given) {
    command
        .add_option(
            "--decisions", given.decisions,
            "What somebody decided about matches, as the page of --format html saves it: what "
            "was rejected is left out, what was accepted is marked, in tables in a column "
            "decision. May be given several times; the last decision about a pair counts")
        ->type_name("FILE")
        ->expected(1)
        ->take_all()
        ->group(kFilesGroup);
    given.files.addIds(command);
}

void addMutual(CLI::App& command, Given& given) {
    command
        .add_flag("--mutual", given.isMutual,
                  "Keep only the matches that are the best of both sides: of the text, as --best "
                  "keeps them, and of the entry, if it is searched for among the texts. All texts "
                  "are read before the first is answered")
        ->group(kMatchesGroup);
}

void addOutput(CLI::App& command, Given& given) {
    given.output.addTo(command);
    command
        .add_flag("-u,--unmatched", given.isUnmatched, "Print only the texts that found nothing")
        ->group(kOutputGroup);
    command.add_flag("--matched", given.isMatched, "Print only the texts that found something")
        ->excludes("--unmatched")
        ->group(kOutputGroup);
    command
        .add_flag("--part", given.isPart,
                  "The texts are a part of a list of which other runs answer the rest: the outputs "
                  "of all, in order, are that of one run. Line numbers and the heading are left "
                  "out, no line at all is fine, and the status is 0 once each text has its answer, "
                  "be it none or an error. A part is read as UTF-8 unless an option says "
                  "otherwise; names of columns need a heading in each part")
        ->group(kOutputGroup);
}

void validate(Given const& given, Format const& format) {
    if (given.isMutual && given.isPart) {
        refuse("--mutual", "needs all texts, and --part has only some");
    }
    given.files.validateIds(!given.decisions.empty() || format.isPage,
                            "--decisions or --format html");
    if (given.isPart && !given.decisions.empty() && !given.files.pairNaming().hasTextIds)
        refuse("--decisions",
               "names lines, which a part does not know; name records by --text-id and --entry-id");
    if (given.isPart && format.isPage) refuse("--part", "gives no page, which is of all texts");
    if (given.isMutual && !given.wanted.isAll()) {
        refuse("--mutual", "keeps the best of both sides, so --best and --top have no effect");
    }
    if (!given.isUnmatched) return;
    if (!given.wanted.isAll()) {
        refuse("--unmatched", "prints no matches, so --best and --top have no effect");
    }
    if (given.files.hasKeptOfEntries()) {
        refuse("--unmatched", "prints no matches, so --keep-entry has no effect");
    }
    if (given.output.isColourDemanded())
        refuse("--unmatched", "prints no matches, so --color has no effect");
}

ReadSettings define(CLI::App& command) {
    auto const given = std::make_shared<Given>();
    given->files.addTexts(command);
    given->files.addEntries(command);
    command.get_option("--entries")->required();
    given->files.addReading(command);
    addDecisions(command, *given);
    given->terms.addTo(command);
    addWanted(command, given->wanted);
    addMutual(command, *given);
    addOutput(command, *given);
    given->run.addTo(command);
    given->run.addTruncate(command);
    return [given](AddInSettings const& addIn) -> Settings {
        OutputSettings const output = given->output.settings(given->files);
        validate(*given, *output.format);
        std::vector<TextFile> decisions;
        for (std::string const& file : given->decisions)
            decisions.push_back(given->files.other(file));
        return MatchSettings{addIn,
                             given->files.texts(given->isPart),
                             given->files.entries(),
                             given->terms.settings(given->files),
                             given->isMutual ? Wanted{Wanted::kAll, true} : given->wanted,
                             output,
                             given->run.settings(),
                             given->isPart,
                             !given->isUnmatched,
                             !given->isMatched,
                             given->isMutual,
                             decisions,
                             given->files.pairNaming(false, true)};
    };
}

}  // namespace

Definition const kMatchDefinition = {
    "match",
    {"search for each line of one file among the lines of another",
     "Prints what each text finds, in the order of the texts and as soon as it is known. Each "
     "match has its nearness (the highest percentage at which the add-in still finds it), the "
     "distance and its limit, the line number of the entry, the add-in's index, and the entry.\n\n"
     "A text that is too long, contains a NUL or cannot be decoded, or whose row cannot be written "
     "in the output encoding, is reported, and the error takes its place in the output. When a "
     "signal ends the run, everything finished by then has been written, and no line is cut short.",
     "0 at least one text matched, 1 none matched, 2 a line or the run failed, 128 plus the "
     "signal's number if interrupted. With --part: 0 each text has its answer, otherwise 2 or 128 "
     "plus the signal's number",
     {"near_text match --texts supplier.txt --entries catalogue.txt --prepare --percent 60 --best",
      "near_text match --texts orders.csv --text-column name --keep id --entries stock.csv "
      "--entry-column title --keep-entry code --format csv --best"}},
    define};

}  // namespace near_text
