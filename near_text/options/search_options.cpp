#include "near_text/options/search_options.h"

#include <charconv>
#include <limits>
#include <sstream>

#include "near_text/commands/commands.h"

namespace near_text {

CLI::Validator percentCheck() {
    return CLI::Validator(
        [](std::string const& text) {
            int percent = -1;
            char const* const end = text.data() + text.size();
            auto const read = std::from_chars(text.data(), end, percent);
            bool const isPercentage =
                read.ec == std::errc() && read.ptr == end && percent >= 0 && percent <= 100;
            return isPercentage ? std::string()
                                : '\'' + text + "' is not a whole number from 0 to 100";
        },
        "");
}

// The parser would leave out an empty value, as a variable of a script that is not set makes it.
CLI::Option& addCommaList(CLI::App& command, std::string const& name,
                          std::function<void(std::vector<std::string> const& values)> take,
                          std::string const& text) {
    auto const split = [shown = name.substr(name.find("--")),
                        take = std::move(take)](std::vector<std::string> const& lists) {
        std::vector<std::string> values;
        for (std::string const& list : lists) {
            bool const isLacking = (',' + list + ',').find(",,") != std::string::npos;
            if (isLacking && !list.empty())
                refuse(shown, '\'' + list + "' has a comma without a value");
            std::istringstream stream(list);
            for (std::string value; std::getline(stream, value, ',');)
                values.push_back(value);
        }
        take(values);
    };
    return *command.add_option_function<std::vector<std::string>>(name, split, text)
                ->allow_extra_args(false);
}

void refuse(std::string const& option, std::string const& reason) {
    throw CLI::ValidationError(option, reason);
}

void PreparationOptions::addTo(CLI::App& command) {
    constexpr char const* kGroup = "Preparing texts and entries";
    command
        .add_flag("-P,--prepare", isWhole,
                  "All three of the following. Texts are printed as they came")
        ->group(kGroup);
    command
        .add_flag("-i,--fold-case", preparation.foldsCase,
                  "Ignore the difference between capital and small letters")
        ->group(kGroup);
    command
        .add_flag("--blank-punctuation", preparation.blanksPunctuation,
                  "Treat punctuation characters as blanks")
        ->group(kGroup);
    command
        .add_flag("--compose", preparation.composes,
                  "Treat a letter and its accents as the one character that they make (NFC)")
        ->group(kGroup);
}

void PreparationOptions::settle() {
    if (isWhole && !preparation.isNone()) {
        refuse("--prepare", "already includes --fold-case, --blank-punctuation and --compose");
    }
    if (isWhole) preparation = {true, true, true};
}

void SearchOptions::addTo(CLI::App& command, bool hasPercent) {
    constexpr char const* kGroup = "Which entries match";
    if (hasPercent) {
        command
            .add_option("-p,--percent", percent,
                        "How alike an entry must be, 0 to 100: once shared words have cancelled, "
                        "100 allows no difference and 0 any. Default: " +
                            std::to_string(kDefaultPercent))
            ->type_name("PERCENT")
            ->check(percentCheck())
            ->group(kGroup);
        command
            .add_option("--threshold", threshold,
                        "Entries longer than this are long, the others short. UTF-16 units count, "
                        "blanks included, and one more in every entry but the first")
            ->type_name("UNITS")
            ->check(CLI::Range(0, std::numeric_limits<int>::max()).description(""))
            ->group(kGroup);
        command.add_option("--short-percent", percentShort, "How alike a short entry must be")
            ->type_name("PERCENT")
            ->check(percentCheck())
            ->group(kGroup);
        command.add_option("--long-percent", percentLong, "How alike a long entry must be")
            ->type_name("PERCENT")
            ->check(percentCheck())
            ->group(kGroup);
    }
    command
        .add_option("-x,--exclude", exclude,
                    "Words that count on neither side, in one argument; may be given several times")
        ->type_name("WORDS")
        ->multi_option_policy(CLI::MultiOptionPolicy::Join)
        ->group(kGroup);
    command.add_option("--exclusions", exclusionsFile, "The same from a file")
        ->type_name("FILE")
        ->group(kGroup);
    preparing.addTo(command);
}

void SearchOptions::settle() {
    for (auto const& [option, value] :
         {std::pair("--short-percent", &percentShort), std::pair("--long-percent", &percentLong)}) {
        if (*value && !threshold) refuse(option, "has no effect without --threshold");
    }
    if (threshold && !percentShort && !percentLong) {
        refuse("--threshold", "has no effect without --short-percent or --long-percent");
    }
    if (percent && percentShort && percentLong) {
        refuse("--percent", "has no effect beside --short-percent and --long-percent");
    }
    preparing.settle();
}

SearchTerms SearchOptions::terms(std::string const& encoding) const {
    int const both = percent.value_or(kDefaultPercent);
    std::u16string words;
    if (!exclusionsFile.empty()) words = readLines({exclusionsFile, encoding});
    words += argumentUnits("--exclude", exclude);
    return {{percentShort.value_or(both), percentLong.value_or(both)},
            threshold.value_or(0),
            preparing.preparation.prepared(words)};
}

void WantedOptions::addTo(CLI::App& command) {
    constexpr char const* kGroup = "Which entries match";
    CLI::Option* const best =
        command
            .add_flag("-b,--best", wanted.isBestAlone,
                      "Keep only the nearest entry, or several if they are equally near")
            ->group(kGroup);
    command.add_option("-n,--top", wanted.most, "Keep only the N nearest entries")
        ->type_name("N")
        ->check(CLI::Range(1, std::numeric_limits<int>::max()).description(""))
        ->excludes(best)
        ->group(kGroup);
}

}  // namespace near_text
