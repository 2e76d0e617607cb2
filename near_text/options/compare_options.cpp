#include "near_text/options/definition.h"
#include "near_text/options/output_options.h"
#include "near_text/options/terms_options.h"
#include "near_text/options/values.h"

namespace near_text {

namespace {

struct Given {
    std::string first;
    std::string second;
    int percent = kDefaultPercent;
    PreparationOptions preparation;
    bool isExplained = false;
    ColourOption colour;
};

ReadSettings define(CLI::App& command) {
    auto const given = std::make_shared<Given>();
    command.add_option("FIRST", given->first, "A text of at most 1000 UTF-16 units")
        ->type_name("")
        ->required();
    command.add_option("SECOND", given->second, "The other text")->type_name("")->required();
    command
        .add_option("-p,--percent", given->percent,
                    "How alike they must be, 0 to 100: once shared words have cancelled, 100 "
                    "allows no difference and 0 any. Default: " +
                        std::to_string(kDefaultPercent))
        ->type_name("PERCENT")
        ->transform(percentCheck());
    command.add_flag("--explain", given->isExplained,
                     "Show the words that cancelled, what was left, the limit, the distance, and "
                     "the highest percentage at which the texts are alike");
    given->colour.addTo(command);
    given->preparation.addTo(command);
    return [given](AddInSettings const& addIn) -> Settings {
        if (given->colour.isDemanded() && !given->isExplained)
            refuse("--color", "has no effect without --explain");
        return CompareSettings{addIn,
                               argumentUnits("FIRST", given->first),
                               argumentUnits("SECOND", given->second),
                               given->percent,
                               given->preparation.preparer(),
                               given->isExplained,
                               given->colour.isOn()};
    };
}

}  // namespace

Definition const kCompareDefinition = {
    "compare",
    {"compare two texts",
     "Prints alike or different. If a text begins with a dash, put -- before the two texts and all "
     "options before that.",
     "0 alike, 1 different, 2 an error",
     {"near_text compare \"garden hose 20 m\" \"hose garden 25 m\" --percent 90 --explain",
      "near_text compare --percent 90 --fold-case -- \"-20 C\" \"-20 c\""}},
    define};

}  // namespace near_text
