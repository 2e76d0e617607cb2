#include <algorithm>

#include "near_text/commands/commands.h"
#include "near_text/input/text_codec.h"
#include "near_text/options/search_options.h"
#include "near_text/output/explanation_text.h"

namespace near_text {

namespace {

struct CompareOptions {
    std::string first;
    std::string second;
    int percent = 0;
    PreparationOptions preparing;
    bool isExplained = false;
};

Status compare(Program& program, CompareOptions const& options) {
    auto const component = program.makeComponent();
    Preparation const& preparation = options.preparing.preparation;
    std::u16string const first = preparation.prepared(argumentUnits("FIRST", options.first));
    std::u16string const second = preparation.prepared(argumentUnits("SECOND", options.second));
    auto const isAlike = component->compare(first, second, options.percent);
    if (!isAlike) {
        bool const isSecond = second.size() > first.size();
        throw std::runtime_error(
            (isSecond ? "SECOND: " : "FIRST: ") +
            refusal(toUtf8(component->lastReport()), std::max(first.size(), second.size())));
    }
    program.output.write(*isAlike ? "alike\n" : "different\n");
    if (options.isExplained) {
        auto const sides =
            reference::explainCompare(first, second, static_cast<unsigned long>(options.percent));
        requireAgreement(sides, *isAlike);
        program.output.write(explanationText(sides, "first", "second"));
    }
    return foundIf(*isAlike);
}

}  // namespace

void addCompare(Program& program) {
    auto const options = std::make_shared<CompareOptions>();
    CLI::App& command = program.addCommand(
        "compare",
        {"compare two texts",
         "Prints alike or different. If a text begins with a dash, put -- before the two texts and "
         "all options before that.",
         "0 alike, 1 different, 2 an error",
         {"near_text compare \"garden hose 20 m\" \"hose garden 25 m\" --percent 90 --explain",
          "near_text compare --percent 90 --fold-case -- \"-20 C\" \"-20 c\""}});
    command.add_option("FIRST", options->first, "A text of at most 1000 UTF-16 units")
        ->type_name("")
        ->required();
    command.add_option("SECOND", options->second, "The other text")->type_name("")->required();
    command
        .add_option("-p,--percent", options->percent,
                    "How alike they must be, 0 to 100: once shared words have cancelled, 100 "
                    "allows no difference and 0 any")
        ->type_name("PERCENT")
        ->check(percentCheck())
        ->required();
    command.add_flag("--explain", options->isExplained,
                     "Show the words that cancelled, what was left, the limit, the distance, and "
                     "the highest percentage at which the texts are alike");
    options->preparing.addTo(command);
    command.callback([&program, options] {
        options->preparing.settle();
        program.command = [&program, options] { return compare(program, *options); };
    });
}

}  // namespace near_text
