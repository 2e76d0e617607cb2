#include "near_text/options/terms_options.h"

#include "near_text/options/values.h"

namespace near_text {

namespace {

constexpr char const* kPreparing = "Preparing texts and entries";

}  // namespace

void PreparationOptions::addTo(CLI::App& command) {
    command
        .add_flag("-P,--prepare", isWhole_,
                  "--fold-case, --blank-punctuation and --compose. Texts are printed as they came")
        ->group(kPreparing);
    for (PreparationStep const& step : kPreparationSteps)
        command.add_flag(step.option, given_.*step.isChosen, step.text)->group(kPreparing);
}

Preparer PreparationOptions::preparer() const {
    if (!isWhole_) return Preparer(given_);
    if (!given_.isNone()) {
        refuse("--prepare", "already includes --fold-case, --blank-punctuation and --compose");
    }
    return Preparer(Preparation::whole());
}

void TermsOptions::addTo(CLI::App& command, bool hasPercent) {
    addPercentages(command, hasPercent);
    command
        .add_option("-x,--exclude", exclude_,
                    "Words that count on neither side, in one argument; may be given several times")
        ->type_name("WORDS")
        ->multi_option_policy(CLI::MultiOptionPolicy::Join)
        ->group(kMatchesGroup);
    command.add_option("--exclusions", exclusionsFile_, "The same from a file")
        ->type_name("FILE")
        ->group(kMatchesGroup);
    command
        .add_flag(
            "--same-numbers", isSameNumbers_,
            "Leave out matches in which each side has a number that the other lacks, such as "
            "13 mm and 17 mm. A number is a run of digits, without leading zeros. For goods and "
            "addresses, not for numbers in which people make typing errors")
        ->group(kMatchesGroup);
    preparation_.addTo(command);
    command
        .add_option(
            "--drop-words", dropWordsFile_,
            "Words to take out of texts and entries before the add-in sees these, so that "
            "the limits shrink with them: words that many texts share and that tell nothing "
            "apart. They are prepared as the texts are")
        ->type_name("FILE")
        ->group(kPreparing);
}

void TermsOptions::addPercentages(CLI::App& command, bool hasPercent) {
    auto const add = [&](char const* name, std::optional<int>& value, std::string const& text) {
        command.add_option(name, value, text)
            ->type_name("PERCENT")
            ->transform(percentCheck())
            ->group(kMatchesGroup);
    };
    if (hasPercent) {
        add("-p,--percent", percent_,
            "How alike an entry must be, 0 to 100: once shared words have cancelled, 100 allows no "
            "difference and 0 any. Default: " +
                std::to_string(kDefaultPercent));
    }
    command
        .add_option("--threshold", threshold_,
                    "Entries longer than this are long, the others short. UTF-16 units count, "
                    "blanks included, and one more in every entry but the first")
        ->type_name("UNITS")
        ->transform(numberCheck(0))
        ->group(kMatchesGroup);
    std::string const instead = ", in place of --percent";
    add("--short-percent", percentShort_, "How alike a short entry must be" + instead);
    add("--long-percent", percentLong_, "How alike a long entry must be" + instead);
}

void TermsOptions::validate() const {
    for (auto const& [option, value] : {std::pair("--short-percent", &percentShort_),
                                        std::pair("--long-percent", &percentLong_)}) {
        if (*value && !threshold_) refuse(option, "has no effect without --threshold");
    }
    if (threshold_ && !percentShort_ && !percentLong_) {
        refuse("--threshold", "has no effect without --short-percent or --long-percent");
    }
    if (percent_ && percentShort_ && percentLong_) {
        refuse("--percent", "has no effect beside --short-percent and --long-percent");
    }
}

Steps TermsOptions::steps(std::vector<int> const& percents) const {
    if (percentShort_ && percentLong_) {
        refuse("--percent", "has no effect beside --short-percent and --long-percent");
    }
    Steps steps;
    for (int const percent : percents)
        steps.push_back({percentShort_.value_or(percent), percentLong_.value_or(percent)});
    return steps;
}

SearchSettings TermsOptions::settings(FileOptions const& files) const {
    validate();
    int const both = percent_.value_or(kDefaultPercent);
    SearchSettings settings{{percentShort_.value_or(both), percentLong_.value_or(both)},
                            threshold_.value_or(0),
                            argumentUnits("--exclude", exclude_),
                            {},
                            preparation_.preparer(),
                            {},
                            isSameNumbers_};
    if (!exclusionsFile_.empty()) settings.exclusionsFile = files.other(exclusionsFile_);
    if (!dropWordsFile_.empty()) settings.dropWordsFile = files.other(dropWordsFile_);
    return settings;
}

void addWanted(CLI::App& command, Wanted& wanted) {
    CLI::Option* const best =
        command
            .add_flag("-b,--best", wanted.isBestAlone,
                      "Keep only the nearest entry, or several if they are equally near")
            ->group(kMatchesGroup);
    command.add_option("-n,--top", wanted.most, "Keep only the N nearest entries")
        ->type_name("N")
        ->transform(numberCheck(1))
        ->excludes(best)
        ->group(kMatchesGroup);
}

}  // namespace near_text
