#include "bench/plain_paths.h"

#include <algorithm>

#include "compare/damerau_levenshtein_distance.h"
#include "compare/limit.h"
#include "search/plain_search.h"
#include "search/section_scanner.h"

using namespace comparer;

namespace bench {

namespace {

Utf16View view(std::u16string_view text) {
    return {host_client::hostUnits(text.data()), text.size()};
}

}  // namespace

Answer plainSearch(SearchArguments const& in) {
    Utf16View const text = view(in.text);
    PlainSearch const search(text, view(in.exclusions), in.separator);
    auto const threshold = static_cast<unsigned long>(in.lengthThreshold);
    Answer matches;
    SectionScanner scanner(view(in.dictionary), in.separator);
    Section entry;
    for (unsigned long i = 0; scanner.nextWithWord(entry); ++i) {
        int const percent = threshold < entry.length ? in.percentLong : in.percentShort;
        unsigned long const limit = Tolerance(static_cast<unsigned long>(percent))
                                        .limit(std::max(entry.length, text.size()));
        if (search.isMatch(entry.text, limit)) matches.push_back(i);
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
