#include "near_text/search_options.h"

#include "near_text/commands.h"

namespace near_text {

void SearchOptions::addTo(CLI::App& command) {
    command
        .add_option("--short", percentShort,
                    "How alike an entry must be, 0 to 100: 100 forgives nothing beyond the shared "
                    "words, 0 everything. Default: 80")
        ->type_name("PERCENT");
    CLI::Option* const thresholdOption =
        command
            .add_option(
                "--threshold", threshold,
                "The longest entry, in UTF-16 units, to which --short applies when --long "
                "is given. It counts blanks, and one unit more in every entry but the first")
            ->type_name("UNITS");
    command
        .add_option("--long", percentLong,
                    "How alike an entry above --threshold must be, 0 to 100. Default: as --short")
        ->type_name("PERCENT")
        ->check(CLI::Range(0, 100).description(""))
        ->needs(thresholdOption);
    command
        .add_option("--exclude", exclude,
                    "Words that count on neither side, in one argument; may be given again")
        ->type_name("WORDS")
        ->multi_option_policy(CLI::MultiOptionPolicy::Join);
    command.add_option("--exclusions", exclusionsFile, "The same from a file")->type_name("FILE");
}

std::u16string SearchOptions::exclusions() const {
    std::u16string words;
    if (!exclusionsFile.empty()) words = readLines(exclusionsFile);
    return words + argumentUnits("--exclude", exclude);
}

stand_in_host::SearchArguments SearchOptions::arguments(std::u16string_view text,
                                                        EntryList const& list,
                                                        std::u16string_view exclusionWords) const {
    return {text,          list.dictionary, list.separator,
            threshold,     percentShort,    percentLong.value_or(percentShort),
            exclusionWords};
}

}  // namespace near_text
