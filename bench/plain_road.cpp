#include "bench/plain_road.h"

#include <algorithm>

#include "compare/damerau_levenshtein_distance.h"
#include "compare/limit.h"
#include "search/mark_input.h"
#include "search/word_sets.h"

namespace bench {

namespace {

Utf16View view(std::u16string_view text) {
    return {host_client::hostUnits(text.data()), text.size()};
}

std::vector<PStringRefSection> sectionsOf(std::u16string_view text, char16_t separator) {
    return markInput({view(text).data(), text.size()}, separator);
}

}  // namespace

Answer plainSearch(SearchArguments const& arguments) {
    WordSet exclusions;
    for (auto const& section : sectionsOf(arguments.exclusions, arguments.separator))
        exclusions.insert(section.words().begin(), section.words().end());
    auto const search = sectionsOf(arguments.text, 0).at(0);
    WordSet searchWords = search.words();
    removeBy(searchWords, exclusions);

    Answer matches;
    auto const entries = sectionsOf(arguments.dictionary, arguments.separator);
    auto const threshold = static_cast<unsigned long>(arguments.lengthThreshold);
    for (unsigned long i = 0; i < entries.size(); ++i) {
        unsigned long const length = entries[i].reference().length();
        int const percent = threshold < length ? arguments.percentLong : arguments.percentShort;
        unsigned long const limit = Tolerance(static_cast<unsigned long>(percent))
                                        .limit(std::max(length, search.reference().length()));
        WordSet words = entries[i].words();
        if (compareStrings(searchWords, words, exclusions, limit)) matches.push_back(i);
    }
    return matches;
}

Answer plainCompare(Pairs const& pairs, int percent) {
    static DamerauLevenshteinDistance comparer;  // holds a table of eight million bytes
    Tolerance const tolerance(static_cast<unsigned long>(percent));
    Answer answers;
    for (auto const& [first, second] : pairs) {
        unsigned long const limit = tolerance.limit(std::max(first.size(), second.size()));
        answers.push_back(comparer.compareByMaps(view(first), view(second), limit, {}) ? 1 : 0);
    }
    return answers;
}

}  // namespace bench
